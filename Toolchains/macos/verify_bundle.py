#!/usr/bin/env python3
"""Verifies what can be known of the macOS bundle without a Mac, and prints a line for each fault.
Usage: verify_bundle.py <bundle>"""
import pathlib
import plistlib
import re
import struct
import sys
import tempfile
import xml.parsers.expat

import code_signature
import icon_file
import mach_o
import objective_c
import text_stubs
import toolchain

TREE = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = "Contents/MacOS/Vesper Pro Agent"
ICON = "Contents/Resources/com.tarnwell.VesperPro10.icns"
KIT = "Contents/Frameworks/CorbelKit.framework"
# What a build on a Mac compiles first, and what another system has in its place.
FOREIGN_RESOURCES = {".css", ".storyboard", ".svg", ".ui"}
MINIMUM = "13.0"
SYSTEM_FOLDERS = ("/usr/lib/", "/System/Library/Frameworks/")

INFORMATION = {
    "CFBundleDevelopmentRegion": "en",
    "CFBundleDisplayName": "Vesper Pro Agent",
    "CFBundleExecutable": "Vesper Pro Agent",
    "CFBundleIconFile": "com.tarnwell.VesperPro10",
    "CFBundleIdentifier": "com.tarnwell.VesperProAgent",
    "CFBundleName": "Vesper Pro Agent",
    "CFBundlePackageType": "APPL",
    "LSMinimumSystemVersion": MINIMUM,
    "LSUIElement": True,
    "NSPrincipalClass": "CorbelApplication",
}
KIT_INFORMATION = {"CFBundleIdentifier": "com.tarnwell.CorbelKit", "CFBundlePackageType": "FMWK"}

# The classes that the system calls back, with their operations in order.
CLASSES = {
    "AppDelegate": ["applicationDidFinishLaunching:", "applicationWillTerminate:", "init"],
    "MonitorFolders": ["observeValueForKeyPath:ofObject:change:context:", "init"],
    "NotificationDelegate": [
        "userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:", "init"],
    "XPCConnection": [
        "init", "initWithServiceName:", "initWithMachServiceName:options:",
        "initWithListenerEndpoint:", "presentError", "setPresentError:"],
}


def program_faults(bundle, exports):
    try:
        images = mach_o.slices((bundle / PROGRAM).read_bytes())
        if sorted(images) != ["arm64", "x86_64"]:
            yield f"the slices are {sorted(images)}"
        for architecture, image in images.items():
            for fault in image_faults(image, exports):
                yield f"{architecture}: {fault}"
    except (OSError, ValueError, struct.error, mach_o.Malformed) as error:
        yield f"the program: {error}"


def image_faults(image, exports):
    if image.platform_and_minimum() != (mach_o.PLATFORM_MACOS, MINIMUM):
        yield f"it runs on platform and version {image.platform_and_minimum()}"
    for library in image.libraries():
        if not library.startswith(SYSTEM_FOLDERS):
            yield f"{library} is no library of the system"
    if image.all(mach_o.LC_RPATH):
        yield "it looks for libraries in folders of its own"
    for symbol, library in image.imports():
        if symbol not in exports.get(library, ()):
            yield f"{symbol} is not known to be in {library}"
    yield from (f"signature: {fault}" for fault in code_signature.faults(image))
    yield from class_faults(objective_c.classes(image))


def class_faults(classes):
    if INFORMATION["NSPrincipalClass"] not in classes:
        yield "there is no principal class"
    for name, selectors in CLASSES.items():
        if name not in classes:
            yield f"class {name} is missing"
        elif [selector for selector in classes[name] if selector in selectors] != selectors:
            yield f"class {name} has {classes[name]}, not {selectors}"


def exported_symbols():
    """By install name, what the checked stubs and the compiler's own stub of libSystem export."""
    exports = {}
    with tempfile.TemporaryDirectory() as folder:
        text_stubs.write_all(toolchain.stub_headers(), pathlib.Path(folder))
        for stub in [*pathlib.Path(folder).rglob("*.tbd"), toolchain.libsystem_stub()]:
            text = stub.read_text()
            name = re.search(r"^install-name:\s*'?([^'\s]+)", text, flags=re.M)[1]
            exports[name] = names_in_stub(text)
    return exports


def names_in_stub(text):
    names = set()
    for key, listed in re.findall(r"(\w+(?:-\w+)*):\s*\[([^\]]*)\]", text):
        entries = {entry.strip(" '\"\n") for entry in listed.split(",")}
        if key.endswith("symbols"):
            names |= entries
        elif key == "objc-classes":
            names |= {f"_OBJC_{kind}_$_{entry}" for entry in entries for kind in ("CLASS", "METACLASS")}
    return names


def information_faults(path, expected, languages=None):
    try:
        information = plistlib.loads(path.read_bytes())
    except (OSError, ValueError, xml.parsers.expat.ExpatError) as error:
        yield f"{path.name}: {error}"
        return
    for key, value in expected.items():
        if information.get(key) != value:
            yield f"{path.name}: {key} is {information.get(key)!r}"
    for key in ("CFBundleShortVersionString", "CFBundleVersion"):
        if not re.fullmatch(r"\d+(\.\d+){0,2}", information.get(key, "")):
            yield f"{path.name}: {key} is {information.get(key)!r}"
    if languages is not None and sorted(information.get("CFBundleLocalizations", [])) != languages:
        yield f"{path.name}: the languages are not the kit's"


def resource_faults(kit):
    links = {"Versions/Current": "A", "Resources": "Versions/Current/Resources"}
    for link, target in links.items():
        if not (kit / link).is_symlink() or str((kit / link).readlink()) != target:
            yield f"{link} does not lead to {target}"
    source = TREE / "CorbelKit/Resources"
    for original in sorted(path for path in source.rglob("*")
                           if path.is_file() and path.suffix not in FOREIGN_RESOURCES):
        name = original.relative_to(source)
        copy = kit / "Resources" / name
        if not copy.is_file() or copy.read_bytes() != original.read_bytes():
            yield f"{name} is missing or another"
        elif name.suffix == ".strings" and not strings_table(copy.read_text(encoding="utf-8")):
            yield f"{name} cannot be read"


def icon_faults(path):
    if not path.is_file():
        yield "there is no icon"
        return
    yield from (f"icon: {fault}" for fault in icon_file.faults(path.read_bytes()))


def strings_table(text):
    """The pairs of a strings file; none when there is anything else in it."""
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    quoted = r'"((?:[^"\\]|\\.)*)"'
    pair = re.compile(rf"\s*{quoted}\s*=\s*{quoted}\s*;\s*")
    pairs, at = {}, 0
    while at < len(text):
        match = pair.match(text, at)
        if not match:
            return {}
        pairs[match[1]] = match[2]
        at = match.end()
    return pairs


def faults(bundle, exports):
    languages = sorted(path.stem for path in (TREE / "CorbelKit/Resources").glob("*.lproj"))
    yield from program_faults(bundle, exports)
    yield from information_faults(bundle / "Contents/Info.plist", INFORMATION, languages)
    yield from icon_faults(bundle / ICON)
    kit = bundle / KIT
    yield from information_faults(kit / "Resources/Info.plist", KIT_INFORMATION)
    yield from resource_faults(kit)


def main():
    bundle = pathlib.Path(sys.argv[1])
    found = list(faults(bundle, exported_symbols()))
    for fault in found:
        print(f"{bundle.name}: {fault}", file=sys.stderr)
    if not found:
        print(f"{bundle} is sound, as far as can be known here.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
