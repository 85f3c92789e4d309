#include "Benchmarks/Measurement.h"
#include "CorbelKit/Formats/LineEnding.h"
#include "CorbelKit/Formats/StringEncoding.h"
#include "Tests/Support/PeakMemory.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <utility>

namespace {

using Benchmarks::report;
using CorbelKit::converted;
using CorbelKit::LineEnding;

constexpr std::size_t textSize = 100'000'000;
constexpr int rounds = 9;

std::string lines(const std::string& line) {
    std::string text;
    text.reserve(textSize + line.size());
    while (text.size() < textSize)
        text += line;
    return text;
}

std::string linesEndingIn(const std::string& ending) {
    return lines(std::string(79, 'x') + ending);
}

/// By how many times the text's own size the process grew beyond what it had before, at most. The
/// peak never sinks: what needs less than a work before it seems to need nothing.
bool reportGrowth(const std::string& what, const std::function<void()>& work, double limit) {
    const auto before = TestSupport::peakMemory();
    work();
    const auto growth = static_cast<double>(TestSupport::peakMemory() - before);
    return report(what + ": memory beside the text", growth / textSize, limit);
}

bool measureMemory() {
    auto text = linesEndingIn("\n");
    bool holds = reportGrowth(
        "Guess", [&] { CorbelKit::guessEncoding(std::as_bytes(std::span(text))); }, 0.01);
    holds = reportGrowth(
                "To Unix, unchanged", [&] { text = converted(std::move(text), LineEnding::unix); },
                0.01) &&
            holds;
    holds = reportGrowth(
                "To Mac OS 9, every line changed",
                [&] { text = converted(std::move(text), LineEnding::macOS9); }, 0.01) &&
            holds;
    return reportGrowth(
               "To Windows, every line changed",
               [&] { text = converted(std::move(text), LineEnding::windows); }, 1.05) &&
           holds;
}

/// Both against a copy of as many bytes, to memory that is there already.
bool measureAgainstCopy(const std::string& what, const std::string& source,
                        const std::function<void()>& work, double limit) {
    std::string copy = source;
    const auto times = Benchmarks::timeInTurns(
        {work, [&] { std::memcpy(copy.data(), source.data(), source.size()); }}, rounds);
    std::printf("  %.1f ms, memcpy %.1f ms\n", times[0].count() * 1e3, times[1].count() * 1e3);
    return report(what + ", against memcpy", times[0] / times[1], limit);
}

bool measureConversion(const std::string& what, const std::string& ending, LineEnding target) {
    const auto source = linesEndingIn(ending);
    auto text = source;
    return measureAgainstCopy(what, source, [&] { text = converted(std::move(text), target); }, 3);
}

bool measureGuess(const std::string& what, const std::string& line, double limit) {
    const auto text = lines(line);
    return measureAgainstCopy(
        what, text, [&] { CorbelKit::guessEncoding(std::as_bytes(std::span(text))); }, limit);
}

} // namespace

/// What reading and changing a text of 100 MB costs.
int main() {
    bool holds = measureMemory();
    holds = measureConversion("Unix to Unix", "\n", LineEnding::unix) && holds;
    holds = measureConversion("Windows to Windows", "\r\n", LineEnding::windows) && holds;
    holds = measureConversion("Mac OS 9 to Mac OS 9", "\r", LineEnding::macOS9) && holds;
    holds = measureGuess("Guess in ASCII", "a line of <b class=\"x\">ASCII</b>\n", 6) && holds;
    holds = measureGuess("Guess in Japanese", "\xE6\xBC\xA2\xE5\xAD\x97", 30) && holds;
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
