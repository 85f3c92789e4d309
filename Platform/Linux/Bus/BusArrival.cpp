#include "Platform/Linux/Bus/BusArrival.h"

#include "Platform/PrintableText.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

using Outcome = BusReply::Outcome;

constexpr std::string_view driver = "org.freedesktop.DBus";

std::string_view orEmpty(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

// The bus itself says so when there is nobody to answer; a destination's own errors of these names
// are refusals like any other.
bool meansThatNobodyIsThere(sd_bus_message* message, std::string_view error) {
    constexpr std::array<std::string_view, 5> names = {
        "org.freedesktop.DBus.Error.NoReply", "org.freedesktop.DBus.Error.ServiceUnknown",
        "org.freedesktop.DBus.Error.NameHasNoOwner", "org.freedesktop.DBus.Error.TimedOut",
        "org.freedesktop.DBus.Error.Disconnected"};
    return orEmpty(sd_bus_message_get_sender(message)) == driver &&
           (std::ranges::find(names, error) != names.end() ||
            error.starts_with("org.freedesktop.DBus.Error.Spawn."));
}

BusReply failure(sd_bus_message* message, BusDeadline deadline) {
    const auto* const error = sd_bus_message_get_error(message);
    const auto name = orEmpty(error->name);
    const auto words = orEmpty(error->message);
    const bool isGone = meansThatNobodyIsThere(message, name);
    if (isGone && BusClock::now() >= deadline) // libsystemd says so in the bus's name
        return {.outcome = Outcome::late, .description = "no answer in time"};
    return {.outcome = isGone ? Outcome::gone : Outcome::refused,
            .description = busDescription(words.empty() ? name : words),
            .errorName = std::string(name)};
}

BusReply fileReply(sd_bus_message* message) {
    int descriptor = -1; // the message's own
    sd_bus_message_read_basic(message, SD_BUS_TYPE_UNIX_FD, &descriptor);
    const int own = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (own == -1)
        return {.outcome = Outcome::unreadable, .description = "an answer without its file"};
    return {.outcome = Outcome::answered, .file = std::make_shared<FileHandle>(own)};
}

} // namespace

std::string busDescription(std::string_view text) {
    constexpr std::size_t longest = 4096; // in bytes
    return printableText(text.substr(0, longest), ActingCharacters::spaced);
}

BusArrival::BusArrival(std::uint64_t number, sd_bus_message* message)
    : number_(number)
    , message_(sd_bus_message_ref(message)) {}

// Who has a well-known name is not known here; the bus gives its own name to nobody.
bool BusArrival::mayComeFrom(std::string_view sender) const {
    const bool isGiven = sender == driver || sender.starts_with(':');
    return !isGiven || orEmpty(sd_bus_message_get_sender(message_.get())) == sender;
}

std::optional<BusReply> BusArrival::readReply(const BusMethod& method, BusDeadline deadline) {
    if (sd_bus_message_is_method_error(message_.get(), nullptr) > 0)
        return failure(message_.get(), deadline);
    const auto type = orEmpty(sd_bus_message_get_signature(message_.get(), 1));
    if (method.replyType && type != *method.replyType)
        return BusReply{.outcome = Outcome::unreadable, .description = "an answer of another type"};
    if (type == "h")
        return fileReply(message_.get());
    switch (readValues()) {
    case BusReader::State::underWay:
        return std::nullopt;
    case BusReader::State::atEnd:
        return BusReply{.outcome = Outcome::answered, .values = reader_->takeValues()};
    default:
        return BusReply{.outcome = Outcome::unreadable,
                        .description = "an answer without a meaning as a value"};
    }
}

BusReader::State BusArrival::readSignal() {
    return readValues();
}

BusSignal BusArrival::takeSignal() {
    return {.sender = std::string(orEmpty(sd_bus_message_get_sender(message_.get()))),
            .name = std::string(orEmpty(sd_bus_message_get_member(message_.get()))),
            .type = std::string(orEmpty(sd_bus_message_get_signature(message_.get(), 1))),
            .values = reader_->takeValues()};
}

BusReader::State BusArrival::readCall() {
    return readValues();
}

BusCall BusArrival::takeCall() {
    return {.number = number_,
            .sender = std::string(orEmpty(sd_bus_message_get_sender(message_.get()))),
            .name = std::string(orEmpty(sd_bus_message_get_member(message_.get()))),
            .values = reader_->takeValues()};
}

BusReader::State BusArrival::readValues() {
    constexpr unsigned valuesPerStep = 4096;
    if (!reader_)
        reader_ = std::make_unique<BusReader>(message_.get());
    return reader_->advance(valuesPerStep);
}

} // namespace Platform
