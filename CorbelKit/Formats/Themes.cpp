#include "CorbelKit/Formats/Themes.h"

#include "CorbelKit/Coding/PropertyListCoder.h"
#include "CorbelKit/Formats/BuiltInThemes.h"
#include "CorbelKit/Services/Appearance.h"
#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/NotificationCenter.h"
#include "CorbelKit/Services/UserDataFile.h"
#include "CorbelKit/Services/UserDataFolder.h"
#include "Platform/Application.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/UserDefaults.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace CorbelKit {
namespace {

using Platform::URL;
using Items = std::vector<std::shared_ptr<Theme>>;

constexpr std::int64_t darkAppearance = 2; // of the setting; 0 follows the system, 1 is light

std::optional<URL> fileOfApplication() {
    const auto folder = userDataFolder();
    return folder
               ? std::optional(folder->appending("Themes.plist", URL::DirectoryHint::notDirectory))
               : std::nullopt;
}

void registerDefaults() {
    Platform::UserDefaults::standard().registerDefaults({
        {std::string(Defaults::currentLightTheme), std::int64_t{0}},
        {std::string(Defaults::currentDarkTheme), static_cast<std::int64_t>(Theme::City::oslo)},
        {std::string(Defaults::editedTheme), std::int64_t{0}},
    });
}

std::optional<Items> themesIn(const URL& file) {
    auto loaded = UserDataFile::loadIfSaved<Theme>(file);
    if (!loaded)
        return std::nullopt;
    auto& themes = *loaded;
    if (!themes)
        return std::nullopt;
    Items items;
    for (auto& theme : *themes)
        items.push_back(std::make_shared<Theme>(std::move(theme)));
    return items;
}

bool prefersDark() {
    return isDark(Platform::Application::effectiveAppearance()) ||
           Platform::UserDefaults::standard().integer(Defaults::appearance) == darkAppearance;
}

/// Null where the setting is no index of an item.
const std::shared_ptr<Theme>* chosen(const Items& items, std::string_view key) {
    const auto index = Platform::UserDefaults::standard().integer(key).value_or(0);
    return index >= 0 && std::cmp_less(index, items.size())
               ? &items[static_cast<std::size_t>(index)]
               : nullptr;
}

void post(std::string_view name) {
    NotificationCenter::defaultCenter().post(name);
}

} // namespace

Themes& Themes::shared() {
    static const Platform::NeverDestroyed<Themes> themes(fileOfApplication());
    return themes.get();
}

Themes::Themes(std::optional<URL> url)
    : url_(std::move(url)) {
    Platform::MainThread::check();
    registerDefaults();
    auto saved = url_ ? themesIn(*url_) : std::nullopt;
    items_ = saved ? std::move(*saved) : builtInThemes();
}

const std::shared_ptr<Theme>& Themes::current() const {
    Platform::MainThread::check();
    if (items_.empty()) {
        std::cerr << "Fatal error: no theme to choose from" << std::endl;
        std::abort();
    }
    if (prefersDark()) {
        if (const auto* theme = chosen(items_, Defaults::currentDarkTheme))
            return *theme;
    }
    const auto* theme = chosen(items_, Defaults::currentLightTheme);
    return theme != nullptr ? *theme : items_.front();
}

void Themes::setColor(Theme& theme, Theme::Color::Kind kind, const Platform::Color& color) {
    Platform::MainThread::check();
    theme.color(kind) = Theme::Color::of(color);
    post(themeColorChanged);
    scheduleSave();
}

// The width of the gutter hangs on both fonts.
void Themes::setFont(Theme& theme, Theme::Font::Kind kind, const Platform::Font& font) {
    Platform::MainThread::check();
    if (kind == Theme::Font::Kind::textFont) {
        theme.textFont = Theme::Font::of(font);
        post(textFontChanged);
    } else {
        theme.lineNumberFont = Theme::Font::of(font);
    }
    post(lineNumberFontChanged);
    scheduleSave();
}

void Themes::save() const {
    Platform::MainThread::check();
    std::vector<Theme> themes;
    themes.reserve(items_.size());
    for (const auto& item : items_)
        themes.push_back(*item);
    const auto data = PropertyListEncoder::binary().encode(themes);
    auto error = data ? std::nullopt : std::optional(data.error().error());
    if (data && url_)
        error = UserDataFile::write(*data, *url_, "Queued saving user data");
    if (error)
        UserDataFile::report(*error);
}

void Themes::scheduleSave() {
    if (std::exchange(isSaveDue_, true))
        return;
    Platform::MainThread::run([this, life = std::weak_ptr(life_)] {
        if (life.expired())
            return;
        isSaveDue_ = false;
        save();
    });
}

} // namespace CorbelKit
