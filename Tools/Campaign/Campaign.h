#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

/// What puts the agent to the test for longer than a test may take. Each prints what it found, and
/// says whether all was as it should be.
namespace Campaign {

/// Rounds of random work, each compared with what a model says of it; divided among agents side by
/// side, or with a seed those of one agent again.
bool oracle(int rounds, std::optional<std::uint64_t> seed);

/// As many such rounds as the time allows.
bool soak(std::chrono::minutes length);

/// Each fault whose name has the part in it, over and over: a line with the fault, how often it was
/// met, what was expected of the agent meanwhile, and how much of that did not come.
bool meetFaults(const std::string& part);

/// Fifty changes a second, each of which has to be notified once.
bool work(std::chrono::minutes length);

/// Nothing happens, and the agent does nothing.
bool rest(std::chrono::minutes length);

} // namespace Campaign
