"""Reads the lists ours<n> in a folder and spells them; writes lists theirs<n> and spells those."""

import datetime
import plistlib
import random
import struct
import sys
from pathlib import Path

EPOCH = datetime.datetime(1970, 1, 1)


def spell(value):
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, int):
        return f"i{value}"
    if isinstance(value, float):
        return f"r{struct.unpack('>Q', struct.pack('>d', value))[0]}"
    if isinstance(value, datetime.datetime):
        return f"d{(value - EPOCH) // datetime.timedelta(seconds=1)}"
    if isinstance(value, bytes):
        return "b" + value.hex()
    if isinstance(value, str):
        return "s" + value.encode().hex()
    if isinstance(value, plistlib.UID):
        return f"u{value.data}"
    if isinstance(value, list):
        return "[" + "".join(spell(element) + "," for element in value) + "]"
    entries = sorted((key.encode(), content) for key, content in value.items())
    return "{" + "".join(f"{key.hex()}:{spell(content)}," for key, content in entries) + "}"


def text(chance):
    return "".join(chance.choices("aZ0 \n<&>\"\tä€\u2028😀\x7f", k=chance.randrange(20)))


def scalar(chance, binary):
    kind = chance.randrange(7 if binary else 6)
    if kind == 0:
        return chance.random() < 0.5
    if kind == 1:
        return chance.choice([-1, 1]) * chance.getrandbits(chance.randrange(1, 64)) or 2**64 - 1
    if kind == 2:
        return chance.choice([chance.gauss(0, 1e10), 1e300, 5e-324, -0.0, float("inf")])
    if kind == 3:
        return datetime.datetime(chance.randrange(1, 9999), 2, 28, 23, 59, chance.randrange(60))
    if kind == 4:
        return chance.randbytes(chance.randrange(200))
    if kind == 5:
        return text(chance)
    return plistlib.UID(chance.getrandbits(40))


def tree(chance, binary, depth=4):
    if depth == 0 or chance.random() < 0.3:
        return scalar(chance, binary)
    count = chance.randrange(6)
    if chance.random() < 0.5:
        return [tree(chance, binary, depth - 1) for _ in range(count)]
    return {text(chance): tree(chance, binary, depth - 1) for _ in range(count)}


def main(folder, rounds):
    lists = [plistlib.loads((folder / f"ours{number}").read_bytes()) for number in range(rounds)]
    (folder / "ours.spelled").write_text("".join(spell(value) + "\n" for value in lists))
    chance = random.Random(5)
    spelled = ""
    for number in range(rounds):
        binary = number % 2 == 1
        value = tree(chance, binary)
        form = plistlib.FMT_BINARY if binary else plistlib.FMT_XML
        (folder / f"theirs{number}").write_bytes(plistlib.dumps(value, fmt=form))
        spelled += spell(value) + "\n"
    (folder / "theirs.spelled").write_text(spelled)


main(Path(sys.argv[1]), int(sys.argv[2]))
