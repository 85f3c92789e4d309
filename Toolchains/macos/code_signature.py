"""Recomputes the digests in an image's embedded signature. Structures, all of them big-endian, as
in the system's public source of <kern/cs_blobs.h>."""
import hashlib
import struct

import mach_o

SUPER_BLOB, CODE_DIRECTORY = 0xFADE0CC0, 0xFADE0C02
SHA256, SHA256_LENGTH = 2, 32
ADHOC, LINKER_SIGNED = 0x2, 0x20000


def faults(image):
    """What is wrong with the signature, as sentences."""
    commands = image.all(mach_o.LC_CODE_SIGNATURE)
    if len(commands) != 1:
        return ["there is no signature"]
    offset, size = struct.unpack_from("<II", image.data, commands[0] + 8)
    directory = _code_directory(image.data[offset:offset + size])
    return _directory_faults(image, directory, offset) if directory else ["there is no code directory"]


def _code_directory(signature):
    magic, _, count = struct.unpack_from(">III", signature)
    if magic != SUPER_BLOB:
        return None
    for index in range(count):
        _, at = struct.unpack_from(">II", signature, 12 + 8 * index)
        if struct.unpack_from(">I", signature, at)[0] == CODE_DIRECTORY:
            return signature[at:]
    return None


def _directory_faults(image, directory, signature_offset):
    (flags, hashes, _, _, pages, limit, length, kind, _,
     page_bits) = struct.unpack_from(">5II4B", directory, 12)
    if (kind, length) != (SHA256, SHA256_LENGTH):
        return ["its digests are not SHA-256"]
    found = []
    if flags & (ADHOC | LINKER_SIGNED) != ADHOC | LINKER_SIGNED:
        found.append(f"its flags are {flags:#x}, not those of a linker's signature")
    if limit != signature_offset:
        found.append(f"it covers {limit} of {signature_offset} bytes")
    page_size = 1 << page_bits
    if pages != -(-limit // page_size):
        return found + [f"it has {pages} digests for {limit} bytes"]
    for page in range(pages):
        content = image.data[page * page_size:min((page + 1) * page_size, limit)]
        at = hashes + page * length
        if hashlib.sha256(content).digest() != directory[at:at + length]:
            found.append(f"page {page} is not the one that was signed")
    return found
