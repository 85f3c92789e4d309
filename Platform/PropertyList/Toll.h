#pragma once

#include "Platform/PropertyList/Events.h"

#include <cstddef>

namespace Platform::PropertyLists {

/// Lets a value pass to another receiver as far as a reader with the limits would take it.
class Toll final : public Receiver {
public:
    Toll(Receiver& next, PropertyList::Limits limits)
        : next_(next)
        , mostContainers_(limits.depth)
        , cost_(limits.cost) {}

    bool beginDictionary() override { return begin() && next_.beginDictionary(); }

    bool endDictionary() override { return end() && next_.endDictionary(); }

    bool beginArray() override { return begin() && next_.beginArray(); }

    bool endArray() override { return end() && next_.endArray(); }

    bool scalar(const Scalar& scalar) override {
        return pay(cost_.chargeValue()) && next_.scalar(scalar);
    }

    bool beginText(TextKind kind) override {
        return pay(kind == TextKind::key ? cost_.chargeEntry() : cost_.chargeValue()) &&
               next_.beginText(kind);
    }

    bool text(std::string_view piece) override {
        return pay(cost_.charge(piece.size())) && next_.text(piece);
    }

    bool endText() override { return next_.endText(); }

    /// Whether the value was stopped here, and not by the other receiver.
    bool isExceeded() const { return isExceeded_; }

private:
    bool begin() { return pay(++containers_ <= mostContainers_ && cost_.chargeValue()); }

    bool end() {
        --containers_;
        return true;
    }

    bool pay(bool isPaid) {
        isExceeded_ = !isPaid;
        return isPaid;
    }

    Receiver& next_;
    const std::size_t mostContainers_;
    std::size_t containers_ = 0;
    Cost cost_;
    bool isExceeded_ = false;
};

} // namespace Platform::PropertyLists
