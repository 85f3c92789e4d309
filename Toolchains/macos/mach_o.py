"""Reads Mach-O programs: slices, load commands, symbols, and the pointers of 64-bit images, whether
they are plain or links in chains of fixups. Structures as in <mach-o/loader.h>, <mach-o/fat.h> and
<mach-o/fixup-chains.h>."""
import collections
import struct

FAT_MAGIC, MAGIC_64 = 0xCAFEBABE, 0xFEEDFACF
ARCHITECTURES = {0x0100000C: "arm64", 0x01000007: "x86_64"}

LC_SYMTAB, LC_LOAD_DYLIB, LC_RPATH = 0x2, 0xC, 0x8000001C
LC_LOAD_WEAK_DYLIB, LC_REEXPORT_DYLIB = 0x80000018, 0x8000001F
LC_SEGMENT_64, LC_CODE_SIGNATURE, LC_BUILD_VERSION = 0x19, 0x1D, 0x32
LC_DYLD_CHAINED_FIXUPS = 0x80000034

N_STAB, N_TYPE, N_EXT, N_UNDF = 0xE0, 0x0E, 0x01, 0x00
PLATFORM_MACOS = 1
CHAINED_PTR_64, CHAINED_PTR_64_OFFSET = 2, 6

Segment = collections.namedtuple("Segment", "name address offset size")
Section = collections.namedtuple("Section", "segment name address size offset")
Import = collections.namedtuple("Import", "symbol library")


class Malformed(Exception):
    """The file is not what it should be."""


def slices(data):
    """The images in a universal file, by architecture."""
    magic, count = struct.unpack_from(">II", data)
    if magic != FAT_MAGIC:
        raise Malformed("not a universal program")
    found = {}
    for index in range(count):
        cpu, _, offset, size, alignment = struct.unpack_from(">IIIII", data, 8 + 20 * index)
        if offset % (1 << alignment):
            raise Malformed("a slice is not aligned")
        found[ARCHITECTURES.get(cpu, hex(cpu))] = Image(data[offset:offset + size])
    return found


class Image:
    def __init__(self, data):
        self.data = data
        magic, _, _, _, count = struct.unpack_from("<5I", data)
        if magic != MAGIC_64:
            raise Malformed("not a 64-bit image")
        self.commands = list(self._commands(count))
        self.segments = [self._segment(at) for at in self.all(LC_SEGMENT_64)]
        self.sections = {(section.segment, section.name): section
                         for at in self.all(LC_SEGMENT_64) for section in self._sections(at)}
        self._base = next(part.address for part in self.segments if part.name == "__TEXT")
        self._pointer_format = self._find_pointer_format()

    def _commands(self, count):
        at = 32
        for _ in range(count):
            command, size = struct.unpack_from("<II", self.data, at)
            yield command, at
            at += size

    def all(self, *wanted):
        return [at for command, at in self.commands if command in wanted]

    def text(self, at):
        return self.data[at:self.data.index(b"\0", at)].decode()

    def _segment(self, at):
        name, address, _, offset, size = struct.unpack_from("<16sQQQQ", self.data, at + 8)
        return Segment(name.rstrip(b"\0").decode(), address, offset, size)

    def _sections(self, at):
        count, = struct.unpack_from("<I", self.data, at + 64)
        for header in range(at + 72, at + 72 + 80 * count, 80):
            name, segment, address, size, offset = struct.unpack_from("<16s16sQQI", self.data, header)
            yield Section(segment.rstrip(b"\0").decode(), name.rstrip(b"\0").decode(), address, size,
                          offset)

    # What the load commands say.

    def libraries(self):
        """Install names, in the order of the ordinals that symbols refer to."""
        commands = self.all(LC_LOAD_DYLIB, LC_LOAD_WEAK_DYLIB, LC_REEXPORT_DYLIB)
        return [self.text(at + struct.unpack_from("<I", self.data, at + 8)[0]) for at in commands]

    def platform_and_minimum(self):
        """The platform's number, and the version as in "13.0"; a program names them once."""
        at, = self.all(LC_BUILD_VERSION)
        platform, minimum = struct.unpack_from("<II", self.data, at + 8)
        return platform, f"{minimum >> 16}.{minimum >> 8 & 0xFF}"

    def imports(self):
        """The undefined symbols, and the library that each is expected from."""
        at, = self.all(LC_SYMTAB)
        symbols, count, strings, _ = struct.unpack_from("<4I", self.data, at + 8)
        libraries = self.libraries()
        found = []
        for entry in range(symbols, symbols + 16 * count, 16):
            name, kind, _, description, _ = struct.unpack_from("<IBBHQ", self.data, entry)
            if not kind & N_STAB and kind & N_EXT and kind & N_TYPE == N_UNDF:
                ordinal = description >> 8
                library = libraries[ordinal - 1] if 0 < ordinal <= len(libraries) else None
                found.append(Import(self.text(strings + name), library))
        return found

    # Memory.

    def offset_of(self, address):
        for part in self.segments:
            if part.address <= address < part.address + part.size:
                return part.offset + address - part.address
        raise Malformed(f"address {address:#x} is in no segment")

    def words(self, address, form):
        return struct.unpack_from("<" + form, self.data, self.offset_of(address))

    def pointer(self, address):
        """The address that is stored at an address; 0 also where another image will fill it in."""
        raw, = self.words(address, "Q")
        if self._pointer_format is None:
            return raw
        if raw >> 63:
            return 0
        target = raw & (1 << 36) - 1
        return target + self._base if target and self._pointer_format == CHAINED_PTR_64_OFFSET else target

    def string(self, address):
        return self.text(self.offset_of(address))

    def _find_pointer_format(self):
        commands = self.all(LC_DYLD_CHAINED_FIXUPS)
        if not commands:
            return None
        header, = struct.unpack_from("<I", self.data, commands[0] + 8)
        starts = header + struct.unpack_from("<I", self.data, header + 4)[0]
        count, = struct.unpack_from("<I", self.data, starts)
        offsets = struct.unpack_from(f"<{count}I", self.data, starts + 4)
        formats = {struct.unpack_from("<H", self.data, starts + offset + 6)[0] for offset in offsets
                   if offset}
        if not formats <= {CHAINED_PTR_64, CHAINED_PTR_64_OFFSET} or len(formats) > 1:
            raise Malformed(f"unknown kinds of pointers: {formats}")
        return formats.pop() if formats else None
