#include "Platform/Linux/Bus/BusWriter.h"

#include <systemd/sd-bus.h>

namespace Platform {

BusWriter& BusWriter::add(bool value) {
    const int number = value ? 1 : 0; // as sd-bus takes it
    return basic(SD_BUS_TYPE_BOOLEAN, &number);
}

BusWriter& BusWriter::add(std::uint8_t value) {
    return basic(SD_BUS_TYPE_BYTE, &value);
}

BusWriter& BusWriter::add(std::int32_t value) {
    return basic(SD_BUS_TYPE_INT32, &value);
}

BusWriter& BusWriter::add(std::uint32_t value) {
    return basic(SD_BUS_TYPE_UINT32, &value);
}

BusWriter& BusWriter::add(std::int64_t value) {
    return basic(SD_BUS_TYPE_INT64, &value);
}

BusWriter& BusWriter::add(std::uint64_t value) {
    return basic(SD_BUS_TYPE_UINT64, &value);
}

BusWriter& BusWriter::add(double value) {
    return basic(SD_BUS_TYPE_DOUBLE, &value);
}

BusWriter& BusWriter::add(const std::string& text) {
    return add(text.c_str());
}

BusWriter& BusWriter::add(const char* text) {
    return basic(SD_BUS_TYPE_STRING, text);
}

BusWriter& BusWriter::add(std::span<const std::byte> data) {
    if (result_ == 0)
        check(sd_bus_message_append_array(message_, SD_BUS_TYPE_BYTE, data.data(), data.size()));
    return *this;
}

BusWriter& BusWriter::array(const char* elementType, const Content& content) {
    return container(SD_BUS_TYPE_ARRAY, elementType, content);
}

BusWriter& BusWriter::structure(const char* types, const Content& content) {
    return container(SD_BUS_TYPE_STRUCT, types, content);
}

BusWriter& BusWriter::variant(const char* type, const Content& content) {
    return container(SD_BUS_TYPE_VARIANT, type, content);
}

BusWriter& BusWriter::entry(const std::string& key, const char* type, const Content& content) {
    return container(SD_BUS_TYPE_DICT_ENTRY, "sv", [&] { add(key).variant(type, content); });
}

BusWriter& BusWriter::basic(char type, const void* value) {
    if (result_ == 0)
        check(sd_bus_message_append_basic(message_, type, value));
    return *this;
}

BusWriter& BusWriter::container(char kind, const char* contents, const Content& content) {
    if (result_ != 0 || !check(sd_bus_message_open_container(message_, kind, contents)))
        return *this;
    content();
    if (result_ == 0)
        check(sd_bus_message_close_container(message_));
    return *this;
}

bool BusWriter::check(int result) {
    if (result < 0)
        result_ = result;
    return result_ == 0;
}

} // namespace Platform
