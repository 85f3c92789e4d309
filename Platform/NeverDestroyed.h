#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <utility>

namespace Platform {

/// Storage for an object that is shared by the whole process, made on first use as a function's
/// static variable and never destroyed: at the end of the process other threads may still use it.
template <class T>
class NeverDestroyed {
public:
    /// Constructs the object from the arguments.
    template <class... Arguments>
    explicit NeverDestroyed(Arguments&&... arguments)
        : object_(std::construct_at(reinterpret_cast<T*>(storage_.data()),
                                    std::forward<Arguments>(arguments)...)) {}

    ~NeverDestroyed() = default;
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;
    NeverDestroyed(NeverDestroyed&&) = delete;
    NeverDestroyed& operator=(NeverDestroyed&&) = delete;

    /// The object, on whichever threads it may be used itself.
    T& get() const { return *object_; }

private:
    alignas(T) std::array<std::byte, sizeof(T)> storage_{};
    T* object_;
};

} // namespace Platform
