#pragma once

#include "Platform/Linux/Bus/BusValueWalk.h"
#include "Platform/Linux/Bus/SDBus.h"
#include "Platform/PropertyList/TreeBuilder.h"

#include <cstdint>

namespace Platform {

/// Counts what a receiver is given, by the tariff of property lists, and builds nothing.
class BusValueCost final : public PropertyLists::Receiver {
public:
    explicit BusValueCost(std::size_t limit)
        : cost_(limit) {}

    bool beginDictionary() override { return cost_.chargeValue(); }

    bool endDictionary() override { return true; }

    bool beginArray() override { return cost_.chargeValue(); }

    bool endArray() override { return true; }

    bool scalar(const PropertyLists::Scalar& /*scalar*/) override { return cost_.chargeValue(); }

    bool beginText(PropertyLists::TextKind kind) override {
        return kind == PropertyLists::TextKind::key ? cost_.chargeEntry() : cost_.chargeValue();
    }

    bool text(std::string_view piece) override { return cost_.charge(piece.size()); }

    bool endText() override { return true; }

private:
    PropertyLists::Cost cost_;
};

/// Reads a message's values, in steps. They are looked through once before any is built, so that a
/// message beyond the bounds costs nothing but itself. Bounds: 32 containers within containers, and
/// the cost that property lists have by default. For one thread.
class BusReader {
public:
    explicit BusReader(sd_bus_message* message);

    using State = BusValueWalk::State;

    /// Takes about so many values more. `refused`: malformed, beyond the bounds, or holding what
    /// has no meaning as a value (an open file, a dictionary with other keys than text).
    State advance(unsigned values);

    /// Once, when read.
    PropertyList::Array takeValues();

private:
    sd_bus_message* const message_;
    BusValueCost cost_;
    PropertyLists::TreeBuilder tree_;
    BusValueWalk walk_;
    bool isBuilding_ = false;
};

} // namespace Platform
