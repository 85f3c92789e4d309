#include "Platform/Linux/Bus/BusReader.h"

#include <utility>

namespace Platform {
namespace {

constexpr auto costLimit = PropertyList::Limits().cost;

} // namespace

BusReader::BusReader(sd_bus_message* message)
    : message_(message)
    , cost_(costLimit)
    , tree_(costLimit)
    , walk_(message, cost_) {}

BusReader::State BusReader::advance(unsigned values) {
    const auto state = walk_.advance(values);
    if (state != State::atEnd || isBuilding_)
        return state;
    isBuilding_ = true;
    walk_ = BusValueWalk(message_, tree_);
    return State::underWay;
}

PropertyList::Array BusReader::takeValues() {
    auto values = tree_.takeResult();
    return std::move(std::get<PropertyList::Array>(values.value()));
}

} // namespace Platform
