#include "Platform/FileSystemEventStream.h"

#include "Platform/Linux/Files/FileSystemEvents/TreeEventReader.h"

#include <string>
#include <utility>

namespace Platform {

class FileSystemEventStream::Impl {
public:
    explicit Impl(TreeEventReader::Identifier tree)
        : tree_(tree) {}

    ~Impl() { end(); }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    void end() const { TreeEventReader::shared().stop(tree_); }

private:
    const TreeEventReader::Identifier tree_;
};

std::unique_ptr<FileSystemEventStream> FileSystemEventStream::make(std::string_view path,
                                                                   std::chrono::nanoseconds latency,
                                                                   const DispatchQueue& queue,
                                                                   Callback callback) {
    const auto tree =
        TreeEventReader::shared().start(std::string(path), queue, latency, std::move(callback));
    return tree ? std::make_unique<FileSystemEventStream>(std::make_unique<Impl>(*tree)) : nullptr;
}

FileSystemEventStream::FileSystemEventStream(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

FileSystemEventStream::~FileSystemEventStream() = default;

void FileSystemEventStream::end() const {
    impl_->end();
}

} // namespace Platform
