#include "Platform/Linux/Bus/BusValueWalk.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <string_view>

namespace Platform {
namespace {

constexpr std::size_t deepest = 32;

template <class Wire, class Value>
bool take(sd_bus_message* message, char type, PropertyLists::Receiver& receiver) {
    Wire value{};
    return sd_bus_message_read_basic(message, type, &value) > 0 &&
           receiver.scalar(static_cast<Value>(value));
}

bool takeUnsigned(sd_bus_message* message, PropertyLists::Receiver& receiver) {
    std::uint64_t value = 0;
    if (sd_bus_message_read_basic(message, SD_BUS_TYPE_UINT64, &value) <= 0)
        return false;
    return std::in_range<std::int64_t>(value) ? receiver.scalar(static_cast<std::int64_t>(value))
                                              : receiver.scalar(value);
}

} // namespace

BusValueWalk::BusValueWalk(sd_bus_message* message, PropertyLists::Receiver& receiver)
    : message_(message)
    , receiver_(&receiver) {}

BusValueWalk::State BusValueWalk::advance(unsigned steps) {
    if (containers_.empty()) {
        if (sd_bus_message_rewind(message_, 1) < 0 || !receiver_->beginArray())
            return State::refused;
        containers_.push_back(Container::message);
    }
    for (; steps > 0; --steps) {
        if (!step())
            return State::refused;
        if (containers_.empty())
            return State::atEnd;
    }
    return State::underWay;
}

bool BusValueWalk::step() {
    char type = 0;
    const char* contents = nullptr;
    const int found = sd_bus_message_peek_type(message_, &type, &contents);
    if (found < 0)
        return false;
    if (found == 0)
        return leave();
    return contents != nullptr ? enter(type, contents) : basic(type);
}

bool BusValueWalk::enter(char type, const char* contents) {
    switch (type) {
    case SD_BUS_TYPE_VARIANT:
        return push(Container::variant, type, contents);
    case SD_BUS_TYPE_STRUCT:
        return enterStructure(contents);
    case SD_BUS_TYPE_DICT_ENTRY:
        isKey_ = true;
        return push(Container::entry, type, contents);
    default:
        return enterArray(contents);
    }
}

bool BusValueWalk::enterArray(const char* contents) {
    const std::string_view elements = contents;
    if (elements == "y")
        return data();
    if (elements.starts_with('{'))
        return enterDictionary(contents);
    return receiver_->beginArray() && push(Container::array, SD_BUS_TYPE_ARRAY, contents);
}

bool BusValueWalk::enterDictionary(const char* contents) {
    constexpr std::string_view textual = "sog";
    return textual.find(contents[1]) != std::string_view::npos && receiver_->beginDictionary() &&
           push(Container::dictionary, SD_BUS_TYPE_ARRAY, contents);
}

bool BusValueWalk::enterStructure(const char* contents) {
    if (std::string_view(contents) != "d")
        return receiver_->beginArray() && push(Container::array, SD_BUS_TYPE_STRUCT, contents);
    double seconds = 0;
    return sd_bus_message_read(message_, "(d)", &seconds) > 0 &&
           receiver_->scalar(PropertyList::Date(std::chrono::duration<double>(seconds)));
}

bool BusValueWalk::push(Container container, char type, const char* contents) {
    const auto depth = std::ranges::count_if(containers_, [](Container outer) {
        return outer != Container::message && outer != Container::entry;
    });
    if (container != Container::entry && static_cast<std::size_t>(depth) == deepest)
        return false;
    containers_.push_back(container);
    return sd_bus_message_enter_container(message_, type, contents) > 0;
}

bool BusValueWalk::leave() {
    const auto left = containers_.back();
    containers_.pop_back();
    if (left == Container::message)
        return receiver_->endArray();
    if (sd_bus_message_exit_container(message_) < 0)
        return false;
    if (left == Container::array)
        return receiver_->endArray();
    return left != Container::dictionary || receiver_->endDictionary();
}

bool BusValueWalk::basic(char type) {
    switch (type) {
    case SD_BUS_TYPE_BOOLEAN: {
        int value = 0;
        return sd_bus_message_read_basic(message_, type, &value) > 0 &&
               receiver_->scalar(value != 0);
    }
    case SD_BUS_TYPE_BYTE:
        return take<std::uint8_t, std::int64_t>(message_, type, *receiver_);
    case SD_BUS_TYPE_INT16:
        return take<std::int16_t, std::int64_t>(message_, type, *receiver_);
    case SD_BUS_TYPE_UINT16:
        return take<std::uint16_t, std::int64_t>(message_, type, *receiver_);
    case SD_BUS_TYPE_INT32:
        return take<std::int32_t, std::int64_t>(message_, type, *receiver_);
    case SD_BUS_TYPE_UINT32:
        return take<std::uint32_t, std::int64_t>(message_, type, *receiver_);
    case SD_BUS_TYPE_INT64:
        return take<std::int64_t, std::int64_t>(message_, type, *receiver_);
    case SD_BUS_TYPE_UINT64:
        return takeUnsigned(message_, *receiver_);
    case SD_BUS_TYPE_DOUBLE:
        return take<double, double>(message_, type, *receiver_);
    case SD_BUS_TYPE_STRING:
    case SD_BUS_TYPE_OBJECT_PATH:
    case SD_BUS_TYPE_SIGNATURE:
        return text(type);
    default:
        return false;
    }
}

bool BusValueWalk::text(char type) {
    const char* text = nullptr;
    if (sd_bus_message_read_basic(message_, type, static_cast<void*>(&text)) <= 0)
        return false;
    const bool isKey = std::exchange(isKey_, false);
    return receiver_->wholeText(
        isKey ? PropertyLists::TextKind::key : PropertyLists::TextKind::string, text);
}

bool BusValueWalk::data() {
    const void* bytes = nullptr;
    std::size_t size = 0;
    if (sd_bus_message_read_array(message_, SD_BUS_TYPE_BYTE, &bytes, &size) < 0)
        return false;
    return receiver_->wholeText(PropertyLists::TextKind::data,
                                {static_cast<const char*>(bytes), size});
}

} // namespace Platform
