#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Text by the rules of Unicode and of the user's language. Text is UTF-8. Callable on any thread.
namespace Platform::TextServices {

/// The user's languages, best first, as BCP 47 tags ("pt-BR", "zh-Hant-TW"); never empty.
std::vector<std::string> preferredLanguages();

/// Each word begins with a capital, by the rules of the user's language.
std::string capitalized(std::string_view text);

/// Lower case by the rules of no language in particular.
std::string lowercased(std::string_view text);

/// The order in which a list of names is shown to the user: by the rules of the user's language,
/// numbers by their values ("File9" before "File10"). Texts that are not the same bytes are only
/// equivalent when they are the same text to Unicode.
std::weak_ordering localizedStandardCompare(std::string_view first, std::string_view second);

/// A text encoding by its number, which is that of macOS on every system, so that settings and
/// files may hold it: an NSStringEncoding, which is 0x80000000 | CFStringEncoding but for the few
/// that NSString.h names.
using EncodingNumber = std::int64_t;

inline constexpr EncodingNumber utf8Encoding = 4;
inline constexpr EncodingNumber unicodeEncoding = 10; ///< UTF-16, its byte order given by a mark

/// What the system can convert from and to, each once, in the system's own order.
std::vector<EncodingNumber> availableStringEncodings();

/// In the user's language; empty for a number that is none.
std::string localizedName(EncodingNumber encoding);

/// The encoding that a name or alias of the IANA's registry of character sets stands for, in
/// capitals or not. Nothing where the system does not know the name.
std::optional<EncodingNumber> encodingForIANACharSetName(std::string_view name);

} // namespace Platform::TextServices
