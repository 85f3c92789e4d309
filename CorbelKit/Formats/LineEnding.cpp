#include "CorbelKit/Formats/LineEnding.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace CorbelKit {
namespace {

constexpr char carriageReturn = '\r';
constexpr char lineFeed = '\n';
constexpr std::string_view windowsBreak = "\r\n";
constexpr std::string_view pilcrow = "\xC2\xB6";
constexpr auto none = std::string_view::npos;

/// Both characters of line breaks in the order in which they stand. Each has a search of its own,
/// remembered until it is passed: texts that lack one of them are not searched for it again and
/// again.
class BreakSearch {
public:
    explicit BreakSearch(std::string_view text)
        : text_(text)
        , carriageReturn_(text.find(carriageReturn))
        , lineFeed_(text.find(lineFeed)) {}

    std::size_t next(std::size_t from) {
        if (carriageReturn_ < from)
            carriageReturn_ = text_.find(carriageReturn, from);
        if (lineFeed_ < from)
            lineFeed_ = text_.find(lineFeed, from);
        return std::min(carriageReturn_, lineFeed_);
    }

private:
    std::string_view text_;
    std::size_t carriageReturn_;
    std::size_t lineFeed_;
};

/// Writes a text over itself, never faster than it is read.
class Rewriting {
public:
    explicit Rewriting(std::string& text)
        : text_(text) {}

    std::size_t position() const { return read_; }

    void keepUpTo(std::size_t end) {
        if (read_ != written_)
            std::memmove(text_.data() + written_, text_.data() + read_, end - read_);
        written_ += end - read_;
        read_ = end;
    }

    void skip(std::size_t count) { read_ += count; }

    void put(char character) { text_[written_++] = character; }

    void finish() {
        keepUpTo(text_.size());
        text_.resize(written_);
    }

private:
    std::string& text_;
    std::size_t read_ = 0;
    std::size_t written_ = 0;
};

void makeUnix(std::string& text) {
    Rewriting rewriting(text);
    for (auto found = text.find(carriageReturn); found != none;
         found = text.find(carriageReturn, rewriting.position())) {
        rewriting.keepUpTo(found);
        rewriting.skip(found + 1 < text.size() && text[found + 1] == lineFeed ? 2 : 1);
        rewriting.put(lineFeed);
    }
    rewriting.finish();
}

void makeMacOS9(std::string& text) {
    Rewriting rewriting(text);
    for (auto found = text.find(lineFeed); found != none;
         found = text.find(lineFeed, rewriting.position())) {
        // What was read already may be overwritten; what ended there was a line feed.
        const bool isSecond = found > rewriting.position() && text[found - 1] == carriageReturn;
        rewriting.keepUpTo(found);
        rewriting.skip(1);
        if (!isSecond)
            rewriting.put(carriageReturn);
    }
    rewriting.finish();
}

/// The places before the last byte of a text, which must have one, for which the predicate holds of
/// the byte there and the one behind it. Runs of a fixed length, whose sums fit into a byte, let
/// the compiler compare many places at once.
template <class Predicate>
std::size_t countNeighbours(std::string_view text, Predicate holds) {
    constexpr std::size_t run = 128;
    const char* read = text.data();
    const char* const last = read + text.size() - 1;
    std::size_t count = 0;
    for (; static_cast<std::size_t>(last - read) >= run; read += run) {
        std::uint8_t inRun = 0;
        for (std::size_t index = 0; index < run; ++index)
            inRun = static_cast<std::uint8_t>(inRun + holds(read[index], read[index + 1]));
        count += inRun;
    }
    for (; read != last; ++read)
        count += holds(read[0], read[1]);
    return count;
}

/// How much longer a text gets with the line breaks of Windows: wherever exactly one of a carriage
/// return and a line feed behind it is there, the other one is missing.
std::size_t missingForWindows(std::string_view text) {
    if (text.empty())
        return 0;
    return countNeighbours(text,
                           [](char first, char second) {
                               return (first == carriageReturn) != (second == lineFeed);
                           }) +
           (text.front() == lineFeed ? 1U : 0U) + (text.back() == carriageReturn ? 1U : 0U);
}

void makeWindows(std::string& text) {
    const auto missing = missingForWindows(text);
    if (missing == 0)
        return;
    std::string result;
    result.reserve(text.size() + missing);
    BreakSearch breaks(text);
    std::size_t read = 0;
    for (auto found = breaks.next(0); found != none; found = breaks.next(read)) {
        result.append(text, read, found - read).append(windowsBreak);
        read = found + (text.compare(found, windowsBreak.size(), windowsBreak) == 0 ? 2 : 1);
    }
    result.append(text, read);
    text = std::move(result);
}

} // namespace

std::string converted(std::string text, LineEnding target) {
    switch (target) {
    case LineEnding::unix:
        makeUnix(text);
        break;
    case LineEnding::windows:
        makeWindows(text);
        break;
    case LineEnding::macOS9:
        makeMacOS9(text);
        break;
    }
    return text;
}

std::string showingPilcrows(std::string text) {
    BreakSearch breaks(text);
    auto found = breaks.next(0);
    if (found == none)
        return text;
    const auto count =
        std::ranges::count(text, carriageReturn) + std::ranges::count(text, lineFeed);
    std::string result;
    result.reserve(text.size() + static_cast<std::size_t>(count) * (pilcrow.size() - 1));
    std::size_t read = 0;
    for (; found != none; found = breaks.next(read)) {
        result.append(text, read, found - read).append(pilcrow);
        read = found + 1;
    }
    return result.append(text, read);
}

std::string withoutLineBreaks(std::string text) {
    Rewriting rewriting(text);
    BreakSearch breaks(text);
    for (auto found = breaks.next(0); found != none; found = breaks.next(rewriting.position())) {
        rewriting.keepUpTo(found);
        rewriting.skip(1);
    }
    rewriting.finish();
    return text;
}

} // namespace CorbelKit
