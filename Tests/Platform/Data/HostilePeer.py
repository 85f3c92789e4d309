"""A D-Bus peer without a library, which answers with what no library would send.

    HostilePeer.py serve <socket>                      listens without a bus
    HostilePeer.py join <socket> <name> <kind> <method>
        takes a name on a bus, and answers one call of the method so; any other with a list of nothing

Answers a call with 64 MiB of the kind that it is named after, or that was given: "variants",
"arrays", "strings" (all empty), "malformed" (strings without their ends), "garbage" (no message at all). Prints "ready".
"""

import os
import socket
import struct
import sys

TOTAL = 64 << 20
KINDS = {"variants": ("av", b"\1y\0\7"), "arrays": ("aay", bytes(4)), "strings": ("as", bytes(8)),
         "malformed": ("as", b"\0\0\0\0xxxx")}
SHARES = {1: "o", 2: "s", 3: "s", 5: "u", 6: "s", 8: "g"}


def padded(data, to):
    return data + bytes(-len(data) % to)


def text(value, signature=False):
    return struct.pack("B" if signature else "<I", len(value)) + value.encode() + b"\0"


def message(kind, serial, fields, body=b""):
    header = b""
    for code, value in fields.items():
        share = SHARES[code]
        header = padded(header, 8) + bytes([code]) + text(share, True)
        header = padded(header, 4) if share != "g" else header
        header += struct.pack("<I", value) if share == "u" else text(value, share == "g")
    return padded(struct.pack("<BBBBIII", ord("l"), kind, 0, 1, len(body), serial, len(header)) + header, 8) + body


def receive(stream):
    """The kind, the serial and the fields of the next message."""
    head = stream.read(16)
    if len(head) < 16:
        sys.exit()
    _, kind, _, _, size, serial, length = struct.unpack("<BBBBIII", head)
    header, fields, at = stream.read(length + -length % 8), {}, 0
    stream.read(size)
    while at < length:
        at += -at % 8
        code, share = header[at], chr(header[at + 2])
        at += 4
        if share == "g":
            at += header[at] + 2
            continue
        at += -at % 4
        value = struct.unpack_from("<I", header, at)[0]
        at += 4
        if share in "so":
            value, at = header[at:at + value].decode(), at + value + 1
        fields[code] = value
    return kind, serial, fields


def answer(connection, stream, given, method=None):
    own = 100
    while True:
        kind, serial, fields = receive(stream)
        if kind != 1:
            continue
        own += 1
        if method not in (None, fields[3]):
            connection.sendall(message(2, own, {5: serial, 8: "as", 6: fields[7]}, bytes(4)))
            continue
        name = given or fields[3]
        if name == "garbage":
            connection.sendall(b"\xff" * 64)
            continue
        signature, unit = KINDS[name]
        shares = {5: serial, 8: signature}
        if 7 in fields:
            shares[6] = fields[7]
        content = unit * (TOTAL // len(unit))
        if signature == "as":
            content = content[:-3]  # nothing follows that the last would be aligned for
        connection.sendall(message(2, own, shares, struct.pack("<I", len(content)) + content))
        if given:
            return


def serve(path):
    server = socket.socket(socket.AF_UNIX)
    server.bind(path)
    server.listen()
    print("ready", flush=True)
    while True:
        connection, _ = server.accept()
        stream = connection.makefile("rb")
        while (line := stream.readline().strip(b"\0\r\n")) != b"BEGIN":
            reply = {b"AUTH": b"DATA", b"DATA": b"OK " + b"0" * 32}.get(line.split()[0], b"ERROR")
            connection.sendall(reply + b"\r\n")
        if os.fork() == 0:
            answer(connection, stream, None)
        connection.close()


def join(path, name, kind, method):
    connection = socket.socket(socket.AF_UNIX)
    connection.connect(path)
    stream = connection.makefile("rb")
    connection.sendall(b"\0AUTH EXTERNAL " + str(os.getuid()).encode().hex().encode() + b"\r\n")
    stream.readline()
    connection.sendall(b"BEGIN\r\n")
    bus = {1: "/org/freedesktop/DBus", 2: "org.freedesktop.DBus", 6: "org.freedesktop.DBus"}
    connection.sendall(message(1, 1, {**bus, 3: "Hello"}))
    connection.sendall(message(1, 2, {**bus, 3: "RequestName", 8: "su"},
                               padded(text(name), 4) + bytes(4)))
    while receive(stream)[2].get(5) != 2:
        pass
    print("ready", flush=True)
    answer(connection, stream, kind, method)


if __name__ == "__main__":
    {"serve": serve, "join": join}[sys.argv[1]](*sys.argv[2:])
