#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace Benchmarks {

using Seconds = std::chrono::duration<double>;

/// The best times of several works that take turns, so that whatever else the machine does meets
/// all of them alike.
std::vector<Seconds> timeInTurns(const std::vector<std::function<void()>>& works, int rounds);

/// Prints a figure beside its limit; whether it keeps to it.
bool report(const std::string& what, double figure, double limit, const std::string& unit = "");

} // namespace Benchmarks
