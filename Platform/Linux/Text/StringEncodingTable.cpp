#include "Platform/Linux/Text/StringEncodingTable.h"

#include <array>

namespace Platform {
namespace {

constexpr TextServices::EncodingNumber coreFoundation(std::uint32_t encoding) {
    return 0x80000000 | encoding;
}

constexpr auto* westernEurope = "155";
constexpr auto* easternEurope = "151";
constexpr auto* northernEurope = "154";

// The numbers are those of NSString.h, and of CFString.h and CFStringEncodingExt.h.
// NOLINTBEGIN(modernize-use-designated-initializers): rows of a table
constexpr std::array encodings = {
    NumberedEncoding{30, "macintosh", westernEurope, "Mac OS Roman"},
    NumberedEncoding{coreFoundation(0x0004), "x-mac-arabic", "ar", "Mac OS"},
    NumberedEncoding{coreFoundation(0x0005), "x-mac-hebrew", "he", "Mac OS"},
    NumberedEncoding{coreFoundation(0x0006), "x-mac-greek", "el", "Mac OS"},
    NumberedEncoding{coreFoundation(0x0007), "x-mac-cyrillic", "Cyrl", "Mac OS"},
    NumberedEncoding{coreFoundation(0x001D), "x-mac-centraleurroman", easternEurope, "Mac OS"},
    NumberedEncoding{6, "x-mac-symbol", "Zsym", "Mac OS"},
    NumberedEncoding{coreFoundation(0x0023), "x-mac-turkish", "tr", "Mac OS"},

    NumberedEncoding{TextServices::unicodeEncoding, "UTF-16", "", "UTF-16"},
    NumberedEncoding{TextServices::utf8Encoding, "UTF-8", "", "UTF-8"},
    NumberedEncoding{coreFoundation(0x04000100), "UTF-7", "", "UTF-7"},
    NumberedEncoding{coreFoundation(0x0C000100), "UTF-32", "", "UTF-32"},
    NumberedEncoding{coreFoundation(0x10000100), "UTF-16BE", "", "UTF-16BE"},
    NumberedEncoding{coreFoundation(0x14000100), "UTF-16LE", "", "UTF-16LE"},
    NumberedEncoding{coreFoundation(0x18000100), "UTF-32BE", "", "UTF-32BE"},
    NumberedEncoding{coreFoundation(0x1C000100), "UTF-32LE", "", "UTF-32LE"},

    NumberedEncoding{5, "ISO-8859-1", westernEurope, "ISO Latin 1"},
    NumberedEncoding{9, "ISO-8859-2", easternEurope, "ISO Latin 2"},
    NumberedEncoding{coreFoundation(0x0203), "ISO-8859-3", westernEurope, "ISO Latin 3"},
    NumberedEncoding{coreFoundation(0x0204), "ISO-8859-4", northernEurope, "ISO Latin 4"},
    NumberedEncoding{coreFoundation(0x0205), "ISO-8859-5", "Cyrl", "ISO 8859-5"},
    NumberedEncoding{coreFoundation(0x0206), "ISO-8859-6", "ar", "ISO 8859-6"},
    NumberedEncoding{coreFoundation(0x0207), "ISO-8859-7", "el", "ISO 8859-7"},
    NumberedEncoding{coreFoundation(0x0208), "ISO-8859-8", "he", "ISO 8859-8"},
    NumberedEncoding{coreFoundation(0x0209), "ISO-8859-9", "tr", "ISO Latin 5"},
    NumberedEncoding{coreFoundation(0x020A), "ISO-8859-10", northernEurope, "ISO Latin 6"},
    NumberedEncoding{coreFoundation(0x020B), "ISO-8859-11", "th", "ISO 8859-11"},
    NumberedEncoding{coreFoundation(0x020D), "ISO-8859-13", northernEurope, "ISO Latin 7"},
    NumberedEncoding{coreFoundation(0x020E), "ISO-8859-14", westernEurope, "ISO Latin 8"},
    NumberedEncoding{coreFoundation(0x020F), "ISO-8859-15", westernEurope, "ISO Latin 9"},
    NumberedEncoding{coreFoundation(0x0210), "ISO-8859-16", "ro", "ISO Latin 10"},

    NumberedEncoding{coreFoundation(0x0400), "IBM437", "Latn", "DOS 437"},
    NumberedEncoding{coreFoundation(0x0405), "IBM737", "el", "DOS 737"},
    NumberedEncoding{coreFoundation(0x0406), "IBM775", northernEurope, "DOS 775"},
    NumberedEncoding{coreFoundation(0x0410), "IBM850", westernEurope, "DOS Latin 1"},
    NumberedEncoding{coreFoundation(0x0411), "IBM851", "el", "DOS 851"},
    NumberedEncoding{coreFoundation(0x0412), "IBM852", easternEurope, "DOS Latin 2"},
    NumberedEncoding{coreFoundation(0x0413), "IBM855", "Cyrl", "DOS 855"},
    NumberedEncoding{coreFoundation(0x0414), "IBM857", "tr", "DOS 857"},
    NumberedEncoding{coreFoundation(0x0415), "IBM860", "pt", "DOS 860"},
    NumberedEncoding{coreFoundation(0x0416), "IBM861", "is", "DOS 861"},
    NumberedEncoding{coreFoundation(0x0417), "IBM862", "he", "DOS 862"},
    NumberedEncoding{coreFoundation(0x0418), "IBM863", "fr-CA", "DOS 863"},
    NumberedEncoding{coreFoundation(0x0419), "IBM864", "ar", "DOS 864"},
    NumberedEncoding{coreFoundation(0x041A), "IBM865", northernEurope, "DOS 865"},
    NumberedEncoding{coreFoundation(0x041B), "IBM866", "ru", "DOS 866"},
    NumberedEncoding{coreFoundation(0x041C), "IBM869", "el", "DOS 869"},
    NumberedEncoding{coreFoundation(0x041D), "windows-874", "th", "Windows, DOS"},
    NumberedEncoding{8, "windows-31j", "ja", "Windows, DOS"},
    NumberedEncoding{coreFoundation(0x0421), "windows-936", "zh-Hans", "Windows, DOS"},
    NumberedEncoding{coreFoundation(0x0422), "windows-949", "ko", "Windows, DOS"},
    NumberedEncoding{coreFoundation(0x0423), "windows-950", "zh-Hant", "Windows, DOS"},

    NumberedEncoding{12, "windows-1252", westernEurope, "Windows Latin 1"},
    NumberedEncoding{15, "windows-1250", easternEurope, "Windows Latin 2"},
    NumberedEncoding{11, "windows-1251", "Cyrl", "Windows"},
    NumberedEncoding{13, "windows-1253", "el", "Windows"},
    NumberedEncoding{14, "windows-1254", "tr", "Windows Latin 5"},
    NumberedEncoding{coreFoundation(0x0505), "windows-1255", "he", "Windows"},
    NumberedEncoding{coreFoundation(0x0506), "windows-1256", "ar", "Windows"},
    NumberedEncoding{coreFoundation(0x0507), "windows-1257", northernEurope, "Windows Baltic"},
    NumberedEncoding{coreFoundation(0x0508), "windows-1258", "vi", "Windows"},
    NumberedEncoding{coreFoundation(0x0510), "johab", "ko", "Johab"},

    NumberedEncoding{1, "US-ASCII", "Latn", "ASCII"},
    NumberedEncoding{coreFoundation(0x0631), "GBK", "zh-Hans", "GBK"},
    NumberedEncoding{coreFoundation(0x0632), "GB18030", "zh", "GB 18030"},

    NumberedEncoding{21, "ISO-2022-JP", "ja", "ISO 2022-JP"},
    NumberedEncoding{coreFoundation(0x0821), "ISO-2022-JP-2", "ja", "ISO 2022-JP-2"},
    NumberedEncoding{coreFoundation(0x0822), "ISO-2022-JP-1", "ja", "ISO 2022-JP-1"},
    NumberedEncoding{coreFoundation(0x0830), "ISO-2022-CN", "zh", "ISO 2022-CN"},
    NumberedEncoding{coreFoundation(0x0831), "ISO-2022-CN-EXT", "zh", "ISO 2022-CN-EXT"},
    NumberedEncoding{coreFoundation(0x0840), "ISO-2022-KR", "ko", "ISO 2022-KR"},

    NumberedEncoding{3, "EUC-JP", "ja", "EUC"},
    NumberedEncoding{coreFoundation(0x0930), "GB2312", "zh-Hans", "GB 2312"},
    NumberedEncoding{coreFoundation(0x0931), "EUC-TW", "zh-Hant", "EUC"},
    NumberedEncoding{coreFoundation(0x0940), "EUC-KR", "ko", "EUC"},

    NumberedEncoding{coreFoundation(0x0A01), "Shift_JIS", "ja", "Shift JIS"},
    NumberedEncoding{coreFoundation(0x0A02), "KOI8-R", "ru", "KOI8-R"},
    NumberedEncoding{coreFoundation(0x0A03), "Big5", "zh-Hant", "Big 5"},
    NumberedEncoding{coreFoundation(0x0A05), "HZ-GB-2312", "zh-Hans", "HZ GB 2312"},
    NumberedEncoding{coreFoundation(0x0A06), "Big5-HKSCS", "zh-Hant", "Big 5 HKSCS"},
    NumberedEncoding{coreFoundation(0x0A08), "KOI8-U", "uk", "KOI8-U"},

    NumberedEncoding{coreFoundation(0x0C02), "IBM037", westernEurope, "EBCDIC 037"},
};
// NOLINTEND(modernize-use-designated-initializers)

} // namespace

std::span<const NumberedEncoding> numberedEncodings() {
    return encodings;
}

} // namespace Platform
