#pragma once

#include "Platform/PropertyList/Events.h"

#include <cstdint>
#include <vector>

struct sd_bus_message;

namespace Platform {

/// Walks over a message where it lies, from its beginning, and hands its values to a receiver as
/// one array; never recursing. Integers of all sizes are integers, object paths and signatures
/// text, structures arrays but for "(d)", a date; a variant is what it holds.
class BusValueWalk {
public:
    enum class State : std::uint8_t { underWay, atEnd, refused };

    BusValueWalk(sd_bus_message* message, PropertyLists::Receiver& receiver);

    /// Takes at most so many values and containers' ends.
    State advance(unsigned steps);

private:
    enum class Container : std::uint8_t { message, array, dictionary, entry, variant };

    bool step();
    bool enter(char type, const char* contents);
    bool enterArray(const char* contents);
    bool enterDictionary(const char* contents);
    bool enterStructure(const char* contents);
    bool push(Container container, char type, const char* contents);
    bool leave();
    bool basic(char type);
    bool text(char type);
    bool data();

    sd_bus_message* message_;
    PropertyLists::Receiver* receiver_;
    std::vector<Container> containers_; // where the walk stands; none at the end
    bool isKey_ = false;                // what comes next
};

} // namespace Platform
