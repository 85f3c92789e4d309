"""Reads each list ours<n> in a folder and writes it again as back<n>, in the binary form; writes
lists of its own in both forms, as theirs<n>.xml and theirs<n>.binary."""

import datetime
import plistlib
import random
import sys
from pathlib import Path


def text(chance):
    return "".join(chance.choices("aZ0 \n<&>\"\tä€\u2028😀\x7f", k=chance.randrange(20)))


def scalar(chance):
    kind = chance.randrange(6)
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
    return text(chance)


def tree(chance, depth=4):
    if depth == 0 or chance.random() < 0.3:
        return scalar(chance)
    count = chance.randrange(6)
    if chance.random() < 0.5:
        return [tree(chance, depth - 1) for _ in range(count)]
    return {text(chance): tree(chance, depth - 1) for _ in range(count)}


def main(folder, rounds):
    chance = random.Random(5)
    for number in range(rounds):
        value = plistlib.loads((folder / f"ours{number}").read_bytes())
        (folder / f"back{number}").write_bytes(plistlib.dumps(value, fmt=plistlib.FMT_BINARY))
        value = tree(chance)
        (folder / f"theirs{number}.xml").write_bytes(plistlib.dumps(value))
        (folder / f"theirs{number}.binary").write_bytes(plistlib.dumps(value, fmt=plistlib.FMT_BINARY))


main(Path(sys.argv[1]), int(sys.argv[2]))
