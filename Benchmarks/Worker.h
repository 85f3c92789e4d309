#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Benchmarks {

/// What one turn of a work came to: figures by their names, one of which is mostly "seconds".
using Figures = std::map<std::string, double, std::less<>>;

/// Does the work once more.
using Turn = std::function<Figures()>;

/// Prepares a work, with its arguments; empty where there is none of that name.
using Work = std::function<Turn(const std::vector<std::string>& arguments)>;
using Works = std::map<std::string, Work, std::less<>>;

/// What each file of works adds to the program.
Works passWorks();
Works agentWorks();
Works formatWorks();

/// Seconds from the start of the work to its end.
double secondsOf(const std::function<void()>& work);

/// What the process has to itself and has written to, from the file of /proc.
double privateBytes(std::string_view process = "self");

/// Ends the program: a figure of a work that failed would mislead.
void require(bool condition, std::string_view what);

} // namespace Benchmarks
