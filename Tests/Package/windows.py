#!/usr/bin/python3
"""The windows of programs that were built with the installed kit, as their users have them: in each
language and appearance, by keyboard alone. What the accessibility tree says is held against the
kit's texts, and against what is drawn.
Usage: windows.py <programs> <more programs> <the kit's resources> <folder for the screenshots>"""
import pathlib
import signal
import subprocess
import sys
import tempfile

from accessibility import Accessibility, elements
from desktop import Desktop, wait_until

LOCALES = {"en": "en_US.UTF-8", "de": "de_DE.UTF-8", "ar": "ar_EG.UTF-8"}
TITLE_BAR = 46 # pixels
TITLE = "You will be asked to allow the background item to run."
SUBTITLE = ("Allow this option in the displayed notification or in System Settings. "
            "Then, attempt your action once more.")
MESSAGE = "Could not establish communication with helper tool."
ADVICE = "Try your operation again. If that fails, quit and relaunch the application and try again."


class Wrong(Exception):
    pass


def require(holds, words):
    if not holds:
        raise Wrong(words)


def texts(resources, language):
    """The string table, from an English text to that of the language."""
    lines = (resources / f"{language}.lproj/Localizable.strings").read_text(encoding="utf-8")
    table = {}
    for line in lines.splitlines():
        if line.startswith('"') and line.endswith('";'):
            key, value = line[1:-2].split('" = "')
            table[key.replace('\\"', '"')] = value.replace('\\"', '"')
    return lambda key: table.get(key, key)


class Run:
    """One program on the desktop, from its start to the end of its window."""

    def __init__(self, desktop, command, language, name):
        self.desktop = desktop
        self.language = language
        self.name = name
        environment = desktop.environment | {"LANG": LOCALES[language], "LANGUAGE": language}
        self.process = subprocess.Popen(command, env=environment, stderr=subprocess.PIPE, text=True)
        self.accessibility = Accessibility(desktop.accessibility_address, self.process.pid)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()

    def window(self, count):
        """What the open window shows, once it shows so much."""
        found = []

        def is_open():
            found[:] = elements(self.accessibility.tree())
            return len([item for item in found if item.is_shown and item.name]) >= count and \
                any(item.is_focused for item in found)
        require(wait_until(is_open), f"no window:\n{describe(found)}")
        return found

    def focus(self):
        return next((item for item in elements(self.accessibility.tree()) if item.is_focused), None)

    def check_tree(self, found, expected):
        names = [item.name for item in found if item.is_shown]
        for text in expected:
            require(text in names, f"no one is told of {text!r}:\n{describe(found)}")
        for item in found:
            require("gtkmm__" not in item.name, f"a toolkit's own word: {item}")
            require(item.role_name != "image" or item.name or not item.is_shown,
                    f"a picture without words: {item}")

    def check_picture(self, found, folder):
        """Everything with a name is drawn at its place, dark or light as the user wants it."""
        picture = self.desktop.screenshot()
        picture.write(folder / f"{self.name}.png")
        left, top, width, height = self.desktop.active_window()
        require(width > 100 and height > 100, f"a window of {width} x {height}")
        inside = picture.part(left + 2, top + height - 12, width - 4, 8)
        require((inside.brightness() < 110) == self.desktop.is_dark,
                f"brightness {inside.brightness()} where dark is {self.desktop.is_dark}")
        for item in found:
            if item.name and item.is_shown and item.role_name in ("label", "button", "image"):
                x, y, item_width, item_height = item.extents
                part = picture.part(left + x, top + y, item_width, item_height)
                require(part.contrast() > 30, f"nothing is drawn for {item}")

    def check_direction(self, found, first, last):
        """The button to press stands at the end of the line, which Arabic has at the left."""
        begin = next(item.extents[0] for item in found if item.name == first)
        end = next(item.extents[0] for item in found if item.name == last)
        require((begin > end) == (self.language == "ar"), f"{first} at {begin}, {last} at {end}")

    def check_tabs(self, count):
        """The keyboard reaches every button, and comes back to the first."""
        reached = [self.focus().name]
        for _ in range(count):
            before = self.focus()
            self.desktop.press("Tab")
            require(wait_until(lambda: self.focus() not in (None, before)), f"Tab stays at {before}")
            reached.append(self.focus().name)
        require(len(set(reached)) == count and reached[0] == reached[-1], f"Tab reaches {reached}")

    def end(self, signal_number=None):
        if signal_number:
            self.process.send_signal(signal_number)
        words = self.process.communicate(timeout=20)[1]
        require(self.process.returncode == 0, f"it ends with {self.process.returncode}: {words}")
        return words


def describe(found):
    return "\n".join(f"  {item}" for item in found)


def check_background_item(run, text, folder):
    found = run.window(5)
    run.check_tree(found, [text(TITLE), text(SUBTITLE), text("OK"), text("Help")])
    run.check_picture(found, folder)
    run.check_direction(found, text("Help"), text("OK"))
    require(run.focus().name == text("OK"), f"{run.focus()} has the focus")
    # The title bar's button does what Escape does.
    run.check_tabs(len([item for item in found if item.role_name == "button" and item.is_shown and
                        item.is_focusable and item.extents[1] > TITLE_BAR]))
    run.desktop.press("Return")
    require(wait_until(lambda: not elements(run.accessibility.tree())), "Return leaves the window open")
    require(run.end(signal.SIGINT) == "", "words on standard error")


def check_alert(run, text, folder):
    found = run.window(3)
    run.check_tree(found, [text(MESSAGE), text(ADVICE), text("OK")])
    run.check_picture(found, folder)
    require(run.focus().name == text("OK"), f"{run.focus()} has the focus")
    run.desktop.press("Return")
    run.end()


def main():
    by_cmake, by_pkg_config, resources, folder = map(pathlib.Path, sys.argv[1:])
    checks = {"background-item": (check_background_item, []),
              "folder-client": (check_alert, ["/"])} # there is no helper
    failed = False
    with tempfile.TemporaryDirectory() as home, Desktop(pathlib.Path(home)) as desktop:
        for is_dark, programs in ((False, by_cmake), (True, by_pkg_config)):
            desktop.set_dark(is_dark)
            for language in LOCALES:
                for program, (check, arguments) in checks.items():
                    name = f"{program}-{language}-{'dark' if is_dark else 'light'}"
                    command = [programs / program, *arguments]
                    with Run(desktop, command, language, name) as run:
                        try:
                            check(run, texts(resources, language), folder)
                        except Wrong as wrong:
                            print(f"{name}: {wrong}", file=sys.stderr)
                            desktop.screenshot().write(folder / f"{name}-wrong.png")
                            failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
