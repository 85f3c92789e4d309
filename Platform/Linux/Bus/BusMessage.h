#pragma once

#include "Platform/FileHandle.h"
#include "Platform/PropertyList.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

/// What goes over a bus and comes from it, as plain values.
namespace Platform {

class BusWriter;

using BusClock = std::chrono::steady_clock;
using BusDeadline = BusClock::time_point; ///< `max`: none

/// Writes a call's arguments. Run once, on the buses' thread; empty for none.
using BusArguments = std::function<void(BusWriter& writer)>;

struct BusMethod {
    std::string destination; ///< empty: the other end, where there is no bus between
    std::string path;
    std::string interface;
    std::string name;
    std::optional<std::string> replyType = {}; ///< the signature; another is unreadable. None: any
    bool mayStart = false;   ///< the bus may start the destination where it knows how to
    bool mayAskUser = false; ///< the destination may ask the user for leave
};

/// What a call came to.
struct BusReply {
    enum class Outcome : std::uint8_t {
        answered,
        refused,    ///< by an error
        late,       ///< no answer within the deadline
        unreadable, ///< an answer of another type, a malformed one, or one beyond the bounds
        gone,       ///< says the bus: nobody has the destination's name (any more), or none came up
        closed,     ///< the connection: whether the call arrived is not known
        unsent,     ///< no message can hold the call
    };

    Outcome outcome = Outcome::closed;
    PropertyList::Array values = {};            ///< when answered, as `BusReader` reads them
    std::shared_ptr<FileHandle> file = nullptr; ///< when answered with one open file, "h"
    std::string description = {};               ///< otherwise why, in one line
    std::string errorName = {};                 ///< of an error message
};

struct BusSignalRule {
    std::string sender;
    std::string path;
    std::string interface;
    std::string name = {};          ///< empty: any
    std::string firstArgument = {}; ///< empty: any
};

struct BusSignal {
    std::string sender; ///< the unique name; empty where there is no bus between
    std::string name;
    std::string type; ///< the signature of the values
    PropertyList::Array values;
};

/// Where calls are taken.
struct BusService {
    std::string path;
    std::string interface;
};

/// A method that somebody calls.
struct BusCall {
    std::uint64_t number = 0; ///< by which it is answered
    std::string sender;       ///< the unique name; empty where there is no bus between
    std::string name;
    PropertyList::Array values;
};

/// What a call is answered with: values, or an error where it has a name.
struct BusAnswer {
    BusArguments values = {};
    std::string errorName = {};
    std::string description = {};
};

/// One short line, whatever the other side wrote.
std::string busDescription(std::string_view text);

} // namespace Platform
