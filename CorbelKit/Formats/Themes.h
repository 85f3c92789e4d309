#pragma once

#include "CorbelKit/Formats/Theme.h"
#include "Platform/URL.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace CorbelKit {

/// The user's themes, kept as a binary property list. Main thread.
///
/// Whoever shows themes observes the notifications below, of the default notification centre: the
/// kit's or, on macOS, the system's. A change is saved a little later, by itself; a save that fails
/// is reported to the user, and the themes in memory stay as they are.
class Themes {
public:
    static constexpr std::string_view themeColorChanged = "ThemeColorChanged"; ///< of any theme
    static constexpr std::string_view textFontChanged = "TextFontChanged";     ///< of any theme
    static constexpr std::string_view lineNumberFontChanged =
        "LineNumberFontChanged"; ///< after a change of either font

    /// Those of the application, from its folder of user data.
    static Themes& shared();

    /// Those in the file; the built-in ones where there is none, or one that cannot be read whole.
    /// Absent: never saved.
    explicit Themes(std::optional<Platform::URL> url);
    ~Themes() = default;
    Themes(const Themes&) = delete;
    Themes& operator=(const Themes&) = delete;
    Themes(Themes&&) = delete;
    Themes& operator=(Themes&&) = delete;

    /// Where the themes are saved; absent: nowhere.
    const std::optional<Platform::URL>& url() const { return url_; }

    /// A file may have held none at all.
    const std::vector<std::shared_ptr<Theme>>& items() const { return items_; }

    /// The theme for the present appearance, which the user's settings choose. Where there are no
    /// themes this is an error of the program, and stops the process.
    const std::shared_ptr<Theme>& current() const;

    /// @{
    /// Changes a theme of the list, notifies, and saves.
    void setColor(Theme& theme, Theme::Color::Kind kind, const Platform::Color& color);
    void setFont(Theme& theme, Theme::Font::Kind kind, const Platform::Font& font);
    /// @}

    /// Writes the list now. Part of every change; on its own, after `items` were changed otherwise.
    void save() const;

private:
    /// Once for all changes until the main thread gets to it.
    void scheduleSave();

    const std::optional<Platform::URL> url_;
    std::vector<std::shared_ptr<Theme>> items_;
    bool isSaveDue_ = false;
    // A save that is due may outlive the object.
    const std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

} // namespace CorbelKit
