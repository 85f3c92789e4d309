#pragma once

#include "Platform/Base64.h"
#include "Platform/PropertyList/Events.h"
#include "Platform/PropertyList/ExpatParser.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Platform::PropertyLists {

/// Reads the XML form as it comes. It keeps the containers that are open, the characters of one
/// number or date, and what expat keeps of one markup token: nothing that grows with the file.
///
/// A document type may be named, but may declare nothing: neither entities nor attributes.
class XMLReader {
public:
    XMLReader(Receiver& receiver, std::size_t depth);

    /// False once the document is no property list, or the receiver wants no more of it.
    bool append(std::string_view bytes);

    bool finish();

private:
    enum class Element : std::uint8_t {
        unknown,
        plist,
        dictionary,
        array,
        key,
        string,
        data,
        integer,
        real,
        date,
        yes,
        no,
    };

    struct Container {
        bool isDictionary = false;
        bool hasKey = false; ///< whose value is to come
    };

    /// The handlers that expat calls.
    struct Handlers;

    static Element elementNamed(std::string_view name);

    void check(bool good);
    bool takesAttributes(const char* const* attributes);
    bool begin(Element element);
    bool beginPlist();
    bool beginContainer(bool isDictionary);
    bool beginLeaf(Element element);
    bool takesKey();
    bool takesValue();
    bool characters(std::string_view piece);
    bool data(std::string_view piece);
    bool collect(std::string_view piece);
    bool end();
    bool endLeaf();
    bool scalar(const std::optional<Scalar>& value);

    Receiver& receiver_;
    std::size_t depth_;
    ExpatParser parser_;
    std::vector<Container> containers_;
    Element leaf_ = Element::unknown; ///< the open element that holds no others, if any
    std::string collected_;           ///< the characters of a number or date
    Base64Decoder base64_;
    std::size_t attributeCharacters_ = 0;
    bool hasPlist_ = false;
    bool hasRoot_ = false;
    bool failed_ = false;
};

} // namespace Platform::PropertyLists
