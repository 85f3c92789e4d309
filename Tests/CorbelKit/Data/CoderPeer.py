"""Reads the record that the coder wrote in both formats, holds it against what it is to be, and
writes it in both formats itself."""

import datetime
import plistlib
import sys
from pathlib import Path

EXPECTED = {
    "yes": True,
    "least": -(2**63),
    "most": 2**64 - 1,
    "real": 0.1,
    "text": "aä€😀<&>\n",
    "data": bytes(range(256)),
    "date": datetime.datetime(2026, 11, 21, 12, 30, 15),
    "url": {"relative": "file:///a%20b/"},
    "list": [{"name": "first"}, {"name": "second", "size": 7}],
    "optionals": [1, "$null", 3],
    "map": {"": -1, "ключ": 2},
}


def same(ours, expected):
    """Equal in value and in type, all the way down."""
    if type(ours) is not type(expected):
        return False
    if isinstance(ours, dict):
        return ours.keys() == expected.keys() and all(same(ours[key], expected[key]) for key in ours)
    if isinstance(ours, list):
        return len(ours) == len(expected) and all(map(same, ours, expected))
    return ours == expected


folder = Path(sys.argv[1])
for name, form in (("xml", plistlib.FMT_XML), ("binary", plistlib.FMT_BINARY)):
    ours = plistlib.loads((folder / f"ours.{name}").read_bytes(), fmt=form)
    if not same(ours, EXPECTED):
        sys.exit(f"{name}: {ours}")
    (folder / f"theirs.{name}").write_bytes(plistlib.dumps(EXPECTED, fmt=form, sort_keys=False))
