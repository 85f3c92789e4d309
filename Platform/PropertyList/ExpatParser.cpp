#include "Platform/PropertyList/ExpatParser.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <random>
#include <span>

namespace Platform::PropertyLists {

namespace {

constexpr std::size_t slice = std::size_t{16} * 1024;
constexpr std::size_t longestToken = std::size_t{1024} * 1024;

// What nobody outside the process knows, or names could be made to meet in expat's tables. Expat
// would ask the system anew for each parser.
unsigned long hashSalt() {
    static const auto salt = [] {
        std::random_device random;
        return (std::uint64_t{random()} << 32U) | random();
    }();
    return salt;
}

} // namespace

ExpatParser::ExpatParser()
    : parser_(XML_ParserCreate(nullptr)) {
    if (!parser_)
        throw std::bad_alloc();
    XML_SetHashSalt(get(), hashSalt());
}

bool ExpatParser::append(std::string_view bytes) {
    while (!bytes.empty()) {
        // Expat scans an unfinished token again with every slice: doubling keeps that linear.
        const std::span<const char> next(bytes.substr(0, std::max(slice, unfinishedToken())));
        const auto size = static_cast<int>(next.size());
        if (XML_Parse(get(), next.data(), size, XML_FALSE) != XML_STATUS_OK)
            return false;
        fed_ += next.size();
        if (unfinishedToken() > longestToken)
            return false;
        bytes.remove_prefix(next.size());
    }
    return true;
}

bool ExpatParser::finish() {
    return XML_Parse(get(), "", 0, XML_TRUE) == XML_STATUS_OK;
}

std::size_t ExpatParser::unfinishedToken() const {
    const auto begin = std::max<XML_Index>(0, XML_GetCurrentByteIndex(get()));
    return fed_ - std::min(fed_, static_cast<std::size_t>(begin));
}

} // namespace Platform::PropertyLists
