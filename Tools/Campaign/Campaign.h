#pragma once

#include <chrono>

/// What puts the agent to the test for longer than a test may take. Each prints what it found, and
/// says whether all was as it should be.
namespace Campaign {

/// Fifty changes a second, each of which has to be notified once.
bool work(std::chrono::minutes length);

/// Nothing happens, and the agent does nothing.
bool rest(std::chrono::minutes length);

} // namespace Campaign
