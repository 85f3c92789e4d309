"""Reads texts, each followed by the forms that were made of it, and holds the forms against those
that replacing makes. All are lines of hexadecimal digits."""

import sys
from pathlib import Path

REPLACEMENTS = {
    "unix": (("\r\n", "\n"), ("\r", "\n")),
    "windows": (("\r\n", "\n"), ("\r", "\n"), ("\n", "\r\n")),
    "macOS9": (("\r\n", "\r"), ("\n", "\r")),
    "pilcrows": (("\r", "¶"), ("\n", "¶")),
    "removed": (("\r\n", ""), ("\r", ""), ("\n", "")),
}

lines = [bytes.fromhex(line).decode() for line in Path(sys.argv[1]).read_text().split("\n")[:-1]]
texts = lines[:: len(REPLACEMENTS) + 1]
forms = zip(*(lines[index :: len(REPLACEMENTS) + 1] for index in range(1, len(REPLACEMENTS) + 1)))
for text, made in zip(texts, forms, strict=True):
    for (name, steps), ours in zip(REPLACEMENTS.items(), made):
        expected = text
        for old, new in steps:
            expected = expected.replace(old, new)
        if ours != expected:
            sys.exit(f"{name} of {text!r}: {ours!r}, expected {expected!r}")
if len(texts) != 10_000:
    sys.exit(f"{len(texts)} texts")
