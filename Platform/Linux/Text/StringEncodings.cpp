#include "Platform/Linux/Text/StringEncodingTable.h"
#include "Platform/TextServices.h"

#include <unicode/locdspnm.h>
#include <unicode/locid.h>
#include <unicode/ucnv.h>

#include <algorithm>
#include <memory>

namespace Platform::TextServices {
namespace {

bool hasConverter(const NumberedEncoding& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(
        ucnv_open(encoding.converter, &status), ucnv_close);
    return U_SUCCESS(status);
}

/// ICU's own name of the converter that a name stands for; empty when it knows none.
std::string_view converterNamed(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    const char* const converter = ucnv_getAlias(name, 0, &status);
    return U_SUCCESS(status) && converter != nullptr ? converter : "";
}

/// ICU passes over what is neither letter nor digit, and takes what follows a comma for an option.
bool hasFormOfCharSetName(std::string_view name) {
    return name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                  "0123456789-_.:()+") == std::string_view::npos;
}

std::string writingName(std::string_view writing) {
    if (writing.empty())
        return "Unicode";
    UErrorCode status = U_ZERO_ERROR;
    const auto language = icu::Locale::forLanguageTag(preferredLanguages().front(), status);
    const std::unique_ptr<icu::LocaleDisplayNames> names(
        icu::LocaleDisplayNames::createInstance(language, ULDN_DIALECT_NAMES));
    const std::string code(writing);
    icu::UnicodeString name;
    if (code.front() >= '0' && code.front() <= '9') {
        names->regionDisplayName(code.c_str(), name);
    } else if (code.front() >= 'A' && code.front() <= 'Z') {
        names->scriptDisplayName(code.c_str(), name);
    } else {
        names->localeDisplayName(icu::Locale::forLanguageTag(code, status), name);
    }
    std::string result;
    return name.toUTF8String(result);
}

} // namespace

std::vector<EncodingNumber> availableStringEncodings() {
    std::vector<EncodingNumber> available;
    for (const auto& encoding : numberedEncodings()) {
        if (hasConverter(encoding))
            available.push_back(encoding.number);
    }
    return available;
}

// ICU calls its converters by internal names ("ibm-1089_P100-1995"); it can translate for whose
// writing they are.
std::string localizedName(EncodingNumber encoding) {
    const auto found = std::ranges::find(numberedEncodings(), encoding, &NumberedEncoding::number);
    if (found == numberedEncodings().end())
        return {};
    return writingName(found->writing) + " (" + found->title + ")";
}

std::optional<EncodingNumber> encodingForIANACharSetName(std::string_view name) {
    if (!hasFormOfCharSetName(name))
        return std::nullopt;
    const std::string alias(name);
    const auto converter = converterNamed(alias.c_str());
    if (converter.empty())
        return std::nullopt;
    const auto encodings = numberedEncodings();
    auto found = std::ranges::find_if(encodings, [&](const NumberedEncoding& encoding) {
        return ucnv_compareNames(encoding.converter, alias.c_str()) == 0;
    });
    if (found == encodings.end()) {
        found = std::ranges::find(encodings, converter, [](const NumberedEncoding& encoding) {
            return converterNamed(encoding.converter);
        });
    }
    return found != encodings.end() ? std::optional(found->number) : std::nullopt;
}

} // namespace Platform::TextServices
