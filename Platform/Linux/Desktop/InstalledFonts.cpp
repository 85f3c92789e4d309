#include "Platform/Native/InstalledFonts.h"

#include "Platform/Linux/Desktop/DesktopSettings.h"
#include "Platform/Linux/Desktop/FontDescription.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <span>

namespace Platform::InstalledFonts {
namespace {

struct FontconfigDestroy {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }

    void operator()(FcObjectSet* objects) const { FcObjectSetDestroy(objects); }

    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
};

template <class T>
using FontconfigPtr = std::unique_ptr<T, FontconfigDestroy>;

const FcChar8* asBytes(const std::string& text) {
    return reinterpret_cast<const FcChar8*>(text.c_str());
}

FontconfigPtr<FcPattern> patternOf(std::initializer_list<std::string> families) {
    FontconfigPtr<FcPattern> pattern(FcPatternCreate());
    for (const auto& family : families)
        FcPatternAddString(pattern.get(), FC_FAMILY, asBytes(family));
    return pattern;
}

bool hasName(const FcPattern* font, const char* kind, const std::string& name) {
    FcChar8* text = nullptr;
    for (int i = 0; FcPatternGetString(font, kind, i, &text) == FcResultMatch; ++i) {
        if (name == reinterpret_cast<const char*>(text))
            return true;
    }
    return false;
}

// Fontconfig itself takes no notice of upper and lower case.
bool isInstalled(const char* kind, const std::string& name) {
    const FontconfigPtr<FcPattern> pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), kind, asBytes(name));
    const FontconfigPtr<FcObjectSet> kinds(FcObjectSetBuild(kind, nullptr));
    const FontconfigPtr<FcFontSet> found(FcFontList(nullptr, pattern.get(), kinds.get()));
    if (!found)
        return false;
    const std::span fonts(found->fonts, static_cast<std::size_t>(found->nfont));
    return std::ranges::any_of(fonts,
                               [&](const FcPattern* font) { return hasName(font, kind, name); });
}

bool isFamily(const std::string& name) {
    return isInstalled(FC_FAMILY, name);
}

FontconfigPtr<FcPattern> closest(FcPattern* pattern) {
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    return FontconfigPtr<FcPattern>(FcFontMatch(nullptr, pattern, &result));
}

// What the machine's settings have in place of a generic family.
FontconfigPtr<FcPattern> substitute(std::initializer_list<std::string> families) {
    const auto pattern = patternOf(families);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    return closest(pattern.get());
}

std::optional<std::string> nameOf(const FontconfigPtr<FcPattern>& font) {
    FcChar8* name = nullptr;
    if (!font || FcPatternGetString(font.get(), FC_POSTSCRIPT_NAME, 0, &name) != FcResultMatch)
        return std::nullopt;
    return reinterpret_cast<const char*>(name);
}

std::optional<std::string> face(const FontDescription& description) {
    const auto pattern = patternOf({description.family});
    for (auto word : description.styleWords) {
        std::erase(word, '-'); // "Semi-Bold"
        if (const auto* style = FcNameGetConstant(asBytes(word)))
            FcPatternAddInteger(pattern.get(), style->object, style->value);
    }
    return nameOf(closest(pattern.get()));
}

bool isFixedPitch(const FcPattern* font) {
    int spacing = FC_PROPORTIONAL;
    return FcPatternGetInteger(font, FC_SPACING, 0, &spacing) == FcResultMatch &&
           spacing >= FC_DUAL; // where ideographs are twice as wide
}

std::string readMonospaceSetting() {
    DesktopSettings settings(std::chrono::milliseconds(250));
    const auto value = settings.read("org.gnome.desktop.interface", "monospace-font-name");
    const auto* const text = value ? value->get<std::string>() : nullptr;
    return text != nullptr ? *text : "";
}

} // namespace

std::optional<std::string> named(const std::string& name) {
    if (isInstalled(FC_POSTSCRIPT_NAME, name))
        return name;
    return isFamily(name) ? face({.family = name, .styleWords = {}}) : std::nullopt;
}

std::optional<std::string> userFixedPitch() {
    static const std::string setting = readMonospaceSetting();
    const auto chosen = FontDescription::parse(setting, isFamily);
    if (!chosen.family.empty())
        return face(chosen);
    const auto font = substitute({"monospace"});
    return font && isFixedPitch(font.get()) ? nameOf(font) : std::nullopt;
}

std::optional<std::string> system(double /*pointSize*/) {
    return nameOf(substitute({"system-ui", "sans-serif"}));
}

} // namespace Platform::InstalledFonts
