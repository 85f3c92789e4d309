#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

struct sd_bus_message;

namespace Platform {

/// Writes values into a message, in order. What a message cannot hold spoils it; nobody needs to
/// ask before the end. Text is UTF-8 without NUL: a bus drops whoever sends it anything else.
class BusWriter {
public:
    explicit BusWriter(sd_bus_message* message)
        : message_(message) {}

    BusWriter& add(bool value);
    BusWriter& add(std::uint8_t value);
    BusWriter& add(std::int32_t value);
    BusWriter& add(std::uint32_t value);
    BusWriter& add(std::int64_t value);
    BusWriter& add(std::uint64_t value);
    BusWriter& add(double value);
    BusWriter& add(const std::string& text);
    BusWriter& add(const char* text);
    BusWriter& add(std::span<const std::byte> data); ///< "ay"

    /// @{
    /// The content writes what is inside, of the types that the signature says.
    using Content = std::function<void()>;
    BusWriter& array(const char* elementType, const Content& content);
    BusWriter& structure(const char* types, const Content& content);
    BusWriter& variant(const char* type, const Content& content);
    /// @}

    /// One entry of an array of "{sv}".
    BusWriter& entry(const std::string& key, const char* type, const Content& content);

    /// 0, or the first error as a negative errno.
    int result() const { return result_; }

private:
    BusWriter& basic(char type, const void* value);
    BusWriter& container(char kind, const char* contents, const Content& content);
    bool check(int result);

    sd_bus_message* message_;
    int result_ = 0;
};

/// The arguments of a call that are plain values, each of a type that the writer adds.
template <class... Values>
auto busArguments(const Values&... values) {
    return [values...](BusWriter& writer) { (writer.add(values), ...); };
}

} // namespace Platform
