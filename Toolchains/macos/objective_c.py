"""Reads the classes that an image defines, from the records that the Objective-C runtime reads."""
NAMED_BY_SELECTOR = 0x40000000
RELATIVE_METHODS = 0x80000000


def classes(image):
    """For each class its instance methods' selectors, in the order of the records."""
    found = {}
    for segment in ("__DATA_CONST", "__DATA"):
        section = image.sections.get((segment, "__objc_classlist"))
        if section:
            for entry in range(section.address, section.address + section.size, 8):
                name, selectors = _class(image, image.pointer(entry))
                found[name] = selectors
    return found


def _class(image, address):
    constant_part = image.pointer(address + 32) & ~7  # the low bits are flags
    name = image.string(image.pointer(constant_part + 24))
    methods = image.pointer(constant_part + 32)
    return name, list(_selectors(image, methods)) if methods else []


def _selectors(image, methods):
    flags, count = image.words(methods, "II")
    size = flags & 0xFFFC
    for entry in range(methods + 8, methods + 8 + count * size, size):
        if not flags & RELATIVE_METHODS:
            yield image.string(image.pointer(entry))
        elif flags & NAMED_BY_SELECTOR:
            yield image.string(entry + image.words(entry, "i")[0])
        else:
            yield image.string(image.pointer(entry + image.words(entry, "i")[0]))
