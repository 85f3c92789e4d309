"""What is wrong with an icon file (.icns) of PNG pictures, read as the system reads it: a wrong length or
checksum anywhere leaves the bundle with the general picture of an application."""
import struct
import zlib

# Points, and pixels for each: of each size that the system shows ("Optimizing for High Resolution").
PIXELS = {"ic11": 16 * 2, "ic12": 32 * 2, "ic07": 128, "ic13": 128 * 2, "ic08": 256, "ic14": 256 * 2,
          "ic09": 512, "ic10": 512 * 2}
SIGNATURE = b"\x89PNG\r\n\x1a\n"


def chunks(content):
    """Type and content of each picture."""
    at = 8
    while at < len(content):
        kind, length = struct.unpack_from(">4sI", content, at)
        if length < 8 or at + length > len(content):
            raise ValueError(f"{kind} does not end in the file")
        yield kind.decode("latin-1"), content[at + 8:at + length]
        at += length


def rows(picture):
    """Those of a PNG picture of eight bits with alpha, as they are stored; ISO/IEC 15948, section 5."""
    if not picture.startswith(SIGNATURE):
        raise ValueError("no PNG picture")
    at, parts = len(SIGNATURE), {b"IDAT": b""}
    while at < len(picture):
        length, kind = struct.unpack_from(">I4s", picture, at)
        body = picture[at + 8:at + 8 + length]
        if struct.unpack_from(">I", picture, at + 8 + length)[0] != zlib.crc32(kind + body):
            raise ValueError(f"the checksum of {kind} is wrong")
        parts[kind] = parts.get(kind, b"") + body
        at += length + 12
    width, height, *form = struct.unpack(">IIBBBBB", parts[b"IHDR"])
    pixels = zlib.decompress(parts[b"IDAT"])
    if form != [8, 6, 0, 0, 0] or len(pixels) != height * (1 + 4 * width):
        raise ValueError("not eight bits with alpha, or cut short")
    return [pixels[row * (1 + 4 * width):(row + 1) * (1 + 4 * width)] for row in range(height)]


def faults(content):
    if content[:4] != b"icns" or struct.unpack_from(">I", content, 4)[0] != len(content):
        yield "it is no icon file of its length"
        return
    try:
        sizes = {}
        for kind, picture in chunks(content):
            stored = rows(picture)
            sizes[kind] = len(stored)
            if len(set(stored)) < 3:
                yield f"{kind} shows nothing"
        if sizes != PIXELS:
            yield f"the pictures are {sizes}"
    except (ValueError, KeyError, struct.error, zlib.error) as error:
        yield str(error)
