// The windows of programs that were built with the installed kit, as their users have them: in each
// language and appearance, by keyboard alone. What the accessibility tree says is held against the
// kit's texts, and against what is drawn.
// Usage: kit-windows <programs> <more programs> <the kit's resources> <folder for the screenshots>

#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopPortal.h"
#include "Tests/Support/Linux/DesktopSession.h"
#include "Tests/Support/Linux/ScreenReader.h"
#include "Tests/Support/WaitUntil.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

using namespace TestSupport;
using ScreenReader::Element;

namespace {

namespace fs = std::filesystem;

void require(bool holds, const std::string& words) {
    if (!holds)
        throw std::runtime_error(words);
}

/// The string table, from an English text to that of the language.
std::map<std::string, std::string> textsOf(const fs::path& resources, const std::string& language) {
    std::map<std::string, std::string> texts;
    std::ifstream lines(resources / (language + ".lproj") / "Localizable.strings");
    for (std::string line; std::getline(lines, line);) {
        const auto middle = line.find("\" = \"");
        if (line.starts_with('"') && middle != std::string::npos)
            texts[line.substr(1, middle - 1)] = line.substr(middle + 5, line.size() - middle - 7);
    }
    return texts;
}

/// What the display shows.
class Picture {
public:
    explicit Picture(const std::string& display)
        : connection_(xcb_connect(display.c_str(), nullptr), xcb_disconnect) {
        const auto& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data;
        width_ = screen.width_in_pixels;
        const auto request =
            xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen.root, 0, 0,
                          screen.width_in_pixels, screen.height_in_pixels, ~0U);
        image_.reset(xcb_get_image_reply(connection_.get(), request, nullptr));
        require(image_ != nullptr, "no picture");
    }

    /// The green of each pixel of the part that is on the display.
    std::vector<int> greens(int left, int top, int width, int height) const {
        const auto* const bytes = xcb_get_image_data(image_.get());
        const int length = xcb_get_image_data_length(image_.get());
        std::vector<int> greens;
        for (int row = std::max(top, 0); row < top + height; ++row) {
            for (int column = std::max(left, 0); column < std::min(left + width, width_);
                 ++column) {
                if (const int at = 4 * (row * width_ + column) + 1; at < length)
                    greens.push_back(bytes[at]);
            }
        }
        require(!greens.empty(), "nothing of it is on the display");
        return greens;
    }

private:
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_;
    std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> image_{nullptr, std::free};
    int width_ = 0;
};

class Trial {
public:
    Trial(fs::path resources, fs::path pictures)
        : resources_(std::move(resources))
        , pictures_(std::move(pictures)) {}

    void setDark(bool isDark) {
        isDark_ = isDark;
        portal_.setColorScheme(isDark ? 1 : 2);
    }

    void check(const fs::path& program, const std::string& language, const std::string& locale) {
        language_ = language;
        texts_ = textsOf(resources_, language);
        name_ = program.filename().string() + "-" + language + (isDark_ ? "-dark" : "-light");
        std::vector<std::string> variables = environment_;
        variables.insert(variables.end(), {"LANGUAGE=" + language, "LANG=" + locale});
        const ChildProcess shell({"sh", "-c",
                                  R"("$0" / 2>&1 & echo $!; wait $!; echo "ended with $?")",
                                  program.string()},
                                 variables);
        const pid_t process = std::stoi(shell.readLine());
        try {
            program.filename() == "background-item" ? checkBackgroundItem(process) : checkAlert();
            const auto end = shell.readAll();
            require(end.ends_with("ended with 0\n"), end);
            require(end == "ended with 0\n" || program.filename() != "background-item", end);
        } catch (...) {
            kill(process, SIGKILL);
            throw;
        }
    }

    const std::string& name() const { return name_; }

private:
    std::string ask(std::vector<std::string> command) const {
        return ChildProcess(std::move(command), environment_).readAll();
    }

    void press(const std::string& key) const { ask({"xdotool", "key", key}); }

    std::string focus() const {
        const auto found = ScreenReader::elements(bus_.address());
        const auto focused = std::ranges::find_if(found, &Element::hasFocus);
        return focused == found.end() ? "" : focused->name;
    }

    std::vector<Element> windowThatShows(const std::vector<std::string>& texts) const {
        std::vector<Element> found;
        const auto isShown = [&](const std::string& text) {
            return std::ranges::any_of(found, [&](const auto& element) {
                return element.isShown && element.name == texts_.at(text);
            });
        };
        waitUntil([&] {
            found = ScreenReader::elements(bus_.address());
            return focus() == texts_.at("OK") && std::ranges::all_of(texts, isShown);
        });
        const auto tree = ScreenReader::read(bus_.address());
        for (const auto& text : texts)
            require(isShown(text), text + " is not shown:\n" + tree);
        require(focus() == texts_.at("OK"), "not OK has the focus:\n" + tree);
        for (const auto& element : found) {
            require(element.name.find("gtkmm__") == std::string::npos,
                    "a toolkit's own word:\n" + tree);
            require(element.role != "image" || !element.name.empty() || !element.isShown,
                    "a picture without words:\n" + tree);
        }
        return found;
    }

    /// Everything with a name is drawn at its place, dark or light as the user wants it.
    void checkPicture(const std::vector<Element>& found) const {
        ask({"scrot", "--overwrite", (pictures_ / (name_ + ".png")).string()});
        std::map<std::string, int> window;
        std::istringstream lines(
            ask({"xdotool", "getactivewindow", "getwindowgeometry", "--shell"}));
        for (std::string line; std::getline(lines, line);)
            window[line.substr(0, line.find('='))] = std::atoi(line.c_str() + line.find('=') + 1);
        require(window["WIDTH"] > 100 && window["HEIGHT"] > 100, "no window");
        const Picture picture(session_.display());
        const auto edge = picture.greens(window["X"] + 2, window["Y"] + window["HEIGHT"] - 12,
                                         window["WIDTH"] - 4, 8);
        long sum = 0;
        for (const int green : edge)
            sum += green;
        require((sum / std::ssize(edge) < 110) == isDark_,
                "neither dark nor light as it should be");
        for (const auto& [role, name, description, hasFocus, canHaveFocus, isShown, place] :
             found) {
            if (name.empty() || !isShown ||
                (role != "label" && role != "button" && role != "image"))
                continue;
            const auto drawn =
                picture.greens(window["X"] + place[0], window["Y"] + place[1], place[2], place[3]);
            const auto [least, most] = std::ranges::minmax(drawn);
            require(most - least > 30, "nothing is drawn for " + name);
        }
    }

    void checkBackgroundItem(pid_t process) {
        const auto found = windowThatShows(
            {"You will be asked to allow the background item to run.",
             "Allow this option in the displayed notification or in System Settings. "
             "Then, attempt your action once more.",
             "OK", "Help"});
        checkPicture(found);
        // The button to press stands at the end of the line, which Arabic has at the left.
        const auto left = [&](const std::string& text) {
            return std::ranges::find(found, texts_.at(text), &Element::name)->place[0];
        };
        require((left("Help") > left("OK")) == (language_ == "ar"), "OK is at the other side");
        // The keyboard reaches every button but the title bar's, which does what Escape does.
        constexpr int titleBar = 46;
        const auto buttons = std::ranges::count_if(found, [](const auto& element) {
            return element.role == "button" && element.canHaveFocus && element.place[1] > titleBar;
        });
        std::set<std::string> reached;
        for (std::ptrdiff_t tab = 0; tab < buttons; ++tab) {
            const auto before = focus();
            reached.insert(before);
            press("Tab");
            require(waitUntil([&] { return !focus().empty() && focus() != before; }),
                    "Tab stays at " + before);
        }
        require(std::ssize(reached) == buttons && focus() == texts_.at("OK"),
                "Tab leaves some out");
        press("Return");
        require(waitUntil([&] { return focus().empty(); }), "Return leaves the window open");
        kill(process, SIGTERM);
    }

    // There is no helper.
    void checkAlert() const {
        checkPicture(windowThatShows({"Could not establish communication with helper tool.",
                                      "Try your operation again. If that fails, quit and relaunch "
                                      "the application and try again.",
                                      "OK"}));
        press("Return");
    }

    const fs::path resources_;
    const fs::path pictures_;
    const DesktopSession session_;
    const BusDaemon bus_{{{ScreenReader::busName, ScreenReader::service}}};
    DesktopPortal portal_{bus_.address()};
    const TemporaryFolder home_;
    const std::vector<std::string> environment_ = {
        "DISPLAY=" + session_.display(), "DBUS_SESSION_BUS_ADDRESS=" + bus_.address(),
        "HOME=" + home_.path().string(), "XDG_RUNTIME_DIR=" + home_.path().string(),
        "GSETTINGS_BACKEND=memory",      "GSK_RENDERER=cairo",
        "GDK_DEBUG=gl-disable"};
    bool isDark_ = false;
    std::string language_;
    std::string name_;
    std::map<std::string, std::string> texts_;
};

} // namespace

int main(int /*count*/, char** arguments) {
    Trial trial(arguments[3], arguments[4]);
    bool holds = true;
    for (const bool isDark : {false, true}) {
        trial.setDark(isDark);
        for (const auto& [language, locale] : std::map<std::string, std::string>{
                 {"en", "en_US.UTF-8"}, {"de", "de_DE.UTF-8"}, {"ar", "ar_EG.UTF-8"}}) {
            for (const auto* const program : {"background-item", "folder-client"}) {
                try {
                    trial.check(fs::path(arguments[isDark ? 2 : 1]) / program, language, locale);
                } catch (const std::exception& wrong) {
                    std::cerr << trial.name() << ": " << wrong.what() << '\n';
                    holds = false;
                }
            }
        }
    }
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
