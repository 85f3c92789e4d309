#pragma once

#include <expat.h>

#include <cstddef>
#include <memory>
#include <string_view>

namespace Platform::PropertyLists {

/// One document's expat parser.
class ExpatParser {
public:
    ExpatParser();

    XML_Parser get() const { return parser_.get(); }

    /// False when the document is not well-formed, when a handler stopped the parser, or when one
    /// markup token, which expat must hold as a whole, outgrows its bound.
    bool append(std::string_view bytes);

    bool finish();

private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    std::size_t unfinishedToken() const;

    std::unique_ptr<XML_ParserStruct, Free> parser_;
    std::size_t fed_ = 0;
};

} // namespace Platform::PropertyLists
