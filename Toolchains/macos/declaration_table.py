"""Reads the public table of the frameworks' declarations that @nativescript/macos-node-api carries:
section __objc_metadata of its Mach-O library. Little-endian; eight section starts after the magic;
names are offsets into the strings, and bit 31 of a word means that another word follows."""
import dataclasses
import struct

LC_SEGMENT_64 = 0x19
WITHOUT_MORE = 0x7FFFFFFF

KINDS = """char int short long i64 uchar uint ushort ulong u64 float double u8 void cstr id proto
class instancetype NSString NSMutableString Class SEL array struct ptr voidptr fnptr bool block u128
ldouble vector extvector complex f16""".split()

PROPERTY, READONLY, STATIC, ANOTHER_MEMBER = 1, 2, 8, 0x80
KIND_MASK, VARIADIC, ANOTHER_TYPE = 0x3F, 0x40, 0x80


@dataclasses.dataclass
class Class:
    name: str
    superclass: int  # offset of another class, or of none
    protocols: list
    members: dict  # "-selector:" or "+selector:" to its signature


@dataclasses.dataclass
class Protocol:
    name: str
    protocols: list
    members: dict


def metadata_section(path):
    with open(path, "rb") as file:
        image = file.read()
    command_count, = struct.unpack_from("<I", image, 16)
    offset = 32
    for _ in range(command_count):
        command, size = struct.unpack_from("<II", image, offset)
        if command == LC_SEGMENT_64:
            found = _section_in_segment(image, offset, b"__objc_metadata")
            if found:
                return found
        offset += size
    raise ValueError(f"{path}: no table of declarations")


def _section_in_segment(image, segment, name):
    count, = struct.unpack_from("<I", image, segment + 64)
    for header in range(segment + 72, segment + 72 + 80 * count, 80):
        if image[header:header + 16].rstrip(b"\0") == name:
            size, start = struct.unpack_from("<QI", image, header + 40)
            return image[start:start + size]
    return None


class Table:
    """A signature is a pair: the type that is returned, and the list of the arguments' types, or
    None where the arguments vary and are not recorded. A type is the name of its kind, or a tuple
    that begins with it."""

    def __init__(self, path):
        self._data = metadata_section(path)
        if self._data[:6] != b"NSMD\1\0":
            raise ValueError(f"{path}: an unknown edition of the table")
        self._strings = 38
        starts = [*struct.unpack_from("<8I", self._data, 6), len(self._data)]
        self._sections = dict(zip(["constants", "enums", "signatures", "functions", "protocols",
                                   "classes", "structs", "unions"], zip(starts, starts[1:])))
        self._at = 0
        self.constants = dict(self._each("constants", self._constant))
        self.enums = dict(self._each("enums", self._enum))
        self.functions = dict(self._each("functions", self._function))
        self.protocols_by_offset = dict(self._each("protocols", self._protocol))
        self.classes_by_offset = dict(self._each("classes", self._class))
        self.classes = {entry.name: entry for entry in self.classes_by_offset.values()}
        self.protocols = {self._plain_name(entry.name): entry
                          for entry in self.protocols_by_offset.values()}

    def _plain_name(self, name):
        """A protocol that shares its name with a class is recorded with a suffix."""
        plain = name.removesuffix("Protocol")
        return plain if plain in self.classes else name

    def superclass_name(self, entry):
        parent = self.classes_by_offset.get(entry.superclass)
        return parent.name if parent else None

    def class_member(self, name, member):
        """Looks in the class, its protocols and its superclasses."""
        entry = self.classes.get(name)
        while entry:
            found = entry.members.get(member) or self._in_protocols(entry.protocols, member)
            if found:
                return found
            entry = self.classes_by_offset.get(entry.superclass)
        return None

    def protocol_member(self, name, member):
        entry = self.protocols.get(name)
        return entry and (entry.members.get(member) or self._in_protocols(entry.protocols, member))

    def _in_protocols(self, offsets, member):
        for offset in offsets:
            entry = self.protocols_by_offset.get(offset)
            found = entry and (entry.members.get(member)
                               or self._in_protocols(entry.protocols, member))
            if found:
                return found
        return None

    def signature(self, offset):
        before = self._at
        self._at = self._sections["signatures"][0] + (offset & WITHOUT_MORE)
        returned, another, variadic = self._type()
        arguments = []
        while another:
            argument, another, _ = self._type()
            arguments.append(argument)
        self._at = before
        return returned, None if variadic else arguments

    # Reading, from self._at on.

    def _number(self, form):
        value, = struct.unpack_from(form, self._data, self._at)
        self._at += struct.calcsize(form)
        return value

    def _word(self):
        return self._number("<I")

    def _string(self):
        return self._string_at(self._word())

    def _string_at(self, offset):
        start = self._strings + (offset & WITHOUT_MORE)
        return self._data[start:self._data.index(b"\0", start)].decode()

    def _words(self, more):
        found = []
        while more:
            word = self._word()
            found.append(word & WITHOUT_MORE)
            more = word >> 31
        return found

    def _type(self):
        code = self._number("<B")
        kind = KINDS[code & KIND_MASK]
        found = kind
        if kind == "array":
            self._number("<H")
            found = (kind, self._type()[0])
        elif kind == "ptr":
            found = (kind, self._type()[0])
        elif kind in ("struct", "block", "fnptr"):
            found = (kind, self._word())
        elif kind == "proto":
            self._words(True)
        elif kind == "class":
            self._words(self._word() >> 31)
        return found, code & ANOTHER_TYPE, code & VARIADIC

    def _members(self, more):
        found = {}
        while more:
            flags = self._number("<B")
            if flags == 0:
                break
            sign = "+" if flags & STATIC else "-"
            if flags & PROPERTY:
                self._word()  # its name; the accessors follow
            self._accessor(sign, found)
            if flags & PROPERTY and not flags & READONLY:
                self._accessor(sign, found)
            more = flags & ANOTHER_MEMBER
        return found

    def _accessor(self, sign, found):
        selector = self._string()
        found[sign + selector] = self.signature(self._word())

    def _each(self, section, read):
        start, end = self._sections[section]
        self._at = start
        while self._at < end and self._data[self._at:end].strip(b"\0"):
            yield read(self._at - start)

    def _constant(self, _):
        name = self._string()
        kind = self._number("<B")
        if kind == 0:
            return name, self._type()[0]
        return name, self._number({1: "<q", 2: "<d", 3: "<I"}[kind])

    def _enum(self, _):
        name, values, more = self._string(), {}, True
        while more:
            word = self._word()
            values[self._string_at(word)] = self._number("<q")
            more = word >> 31
        return name, values

    def _function(self, _):
        name = self._string()
        return name, self.signature(self._word())

    def _protocol(self, offset):
        word = self._word()
        return offset, Protocol(self._string_at(word), self._words(word >> 31), self._members(True))

    def _class(self, offset):
        word = self._word()
        self._word()  # the name at run time
        protocols = self._words(word >> 31)
        superclass = self._word()
        return offset, Class(self._string_at(word), superclass & WITHOUT_MORE, protocols,
                             self._members(superclass >> 31))
