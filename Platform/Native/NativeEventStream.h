#pragma once

#include "Platform/FileSystemEventStream.h"

#include <chrono>
#include <memory>
#include <string_view>

namespace Platform {

/// What the system itself has for a `FileSystemEventStream`, which takes the steps one at a time
/// and only in their order. Destroying it releases it.
class NativeEventStream {
    class Impl;

public:
    /// Null when the system makes no stream.
    static std::unique_ptr<NativeEventStream> create(std::string_view path,
                                                     std::chrono::nanoseconds latency,
                                                     FileSystemEventStream::Callback callback);
    explicit NativeEventStream(std::unique_ptr<Impl> impl);
    ~NativeEventStream();
    NativeEventStream(const NativeEventStream&) = delete;
    NativeEventStream& operator=(const NativeEventStream&) = delete;
    NativeEventStream(NativeEventStream&&) = delete;
    NativeEventStream& operator=(NativeEventStream&&) = delete;

    void setDispatchQueue(const DispatchQueue& queue);
    bool start(); ///< false when it did not start
    void stop();
    void invalidate();

private:
    const std::unique_ptr<Impl> impl_;
};

} // namespace Platform
