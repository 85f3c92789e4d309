"""Checks the theme file that was written, and writes its themes in both formats itself."""

import plistlib
import sys
from pathlib import Path

COLORS = {"command", "comment", "instruction", "keyword", "api", "variable", "string", "attribute",
          "text", "invisible", "background", "highlightLine", "lineNumberText",
          "lineNumberBackground"}
FONTS = {"lineNumberFont", "textFont"}

folder = Path(sys.argv[1])
themes = plistlib.loads((folder / "Themes.plist").read_bytes(), fmt=plistlib.FMT_BINARY)
if len(themes) != 4 or themes[3]["lineNumberBackground"]["alpha"] != 1.09:
    sys.exit("not the four themes")
for theme in themes:
    if theme.keys() != COLORS | FONTS:
        sys.exit(f"keys: {sorted(theme)}")
    for key in COLORS:
        if theme[key].keys() != {"red", "green", "blue", "alpha"}:
            sys.exit(f"{key}: {theme[key]}")
        if not all(type(part) is float for part in theme[key].values()):
            sys.exit(f"{key} is not of real numbers: {theme[key]}")
    for key in FONTS:
        if theme[key].keys() != {"string"} or "@@@@" not in theme[key]["string"]:
            sys.exit(f"{key}: {theme[key]}")
for name, form in (("xml", plistlib.FMT_XML), ("binary", plistlib.FMT_BINARY)):
    (folder / f"theirs.{name}").write_bytes(plistlib.dumps(themes[::-1], fmt=form))
