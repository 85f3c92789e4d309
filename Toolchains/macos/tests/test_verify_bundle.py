"""That the verification of the bundle can fail: each row seeds one fault in a copy of the bundle
that Scripts/build-macos made, or of the one that CORBEL_BUNDLE names."""
import os
import pathlib
import shutil
import struct
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))

import mach_o
import verify_bundle

BUNDLE = pathlib.Path(os.environ.get(
    "CORBEL_BUNDLE", verify_bundle.TREE / "build/macos/Vesper Pro Agent.app"))
KIT_RESOURCES = f"{verify_bundle.KIT}/Versions/A/Resources"


def rewrite(name, change):
    def seed(bundle):
        path = bundle / name
        path.write_bytes(change(path.read_bytes()))
    return seed


def replace(name, before, after):
    """Everywhere, so in both slices of the program."""
    def change(content):
        if before not in content:
            raise AssertionError(f"{before} is not in {name}")
        return content.replace(before, after)
    return rewrite(name, change)


def in_program(before, after):
    return replace(verify_bundle.PROGRAM, before, after)


def flip_byte_in_last_slice(content):
    at = struct.unpack_from(">IIIII", content, 8 + 20)[2] + 0x5000
    return content[:at] + bytes([content[at] ^ 1]) + content[at + 1:]


def keep_one_slice(content):
    _, _, offset, size, _ = struct.unpack_from(">IIIII", content, 8)
    return content[offset:offset + size]


def build_version(minimum):
    return struct.pack("<IIII", mach_o.LC_BUILD_VERSION, 32, mach_o.PLATFORM_MACOS, minimum << 16)


FAULTS = [
    # what is wrong, how it is seeded, what must be said of it
    ("a byte that changed after signing", rewrite(verify_bundle.PROGRAM, flip_byte_in_last_slice),
     "page 5 is not the one that was signed"),
    ("one architecture only", rewrite(verify_bundle.PROGRAM, keep_one_slice), "not a universal program"),
    ("a later minimum version", in_program(build_version(13), build_version(14)), "14.0"),
    ("a library from elsewhere", in_program(b"/usr/lib/libobjc", b"/opt/lib/libobjc"),
     "/opt/lib/libobjc.A.dylib is no library of the system"),
    ("an unknown symbol", in_program(b"\0_objc_msgSend\0", b"\0_objc_msgSemd\0"),
     "_objc_msgSemd is not known to be in /usr/lib/libobjc.A.dylib"),
    ("a renamed class", in_program(b"\0NotificationDelegate\0", b"\0NotificationDelegbte\0"),
     "class NotificationDelegate is missing"),
    ("a renamed selector", in_program(b"\0applicationWillTerminate:\0", b"\0applicationWillTerminatf:\0"),
     "class AppDelegate has"),
    ("no principal class", in_program(b"\0CorbelApplication\0", b"\0CorbelAppkication\0"),
     "there is no principal class"),
    ("an agent that shows in the Dock", replace("Contents/Info.plist", b"<true/>", b"<false/>"),
     "LSUIElement is False"),
    ("a list of properties cut short", rewrite("Contents/Info.plist", lambda content: content[:300]),
     "Info.plist: "),
    ("no icon", lambda bundle: (bundle / verify_bundle.ICON).unlink(), "there is no icon"),
    ("a byte of the icon that changed", rewrite(verify_bundle.ICON, lambda content: content[:-20] + bytes(20)),
     "icon: the checksum of "),
    ("a picture of the icon for another size", replace(verify_bundle.ICON, b"ic12", b"ic11"),
     "icon: the pictures are "),
    ("a language that is not named", replace("Contents/Info.plist", b"<string>he</string>", b""),
     "the languages are not the kit's"),
    ("a missing table of texts",
     lambda bundle: (bundle / KIT_RESOURCES / "de.lproj/Localizable.strings").unlink(),
     "de.lproj/Localizable.strings is missing"),
    ("a table of texts cut short",
     rewrite(f"{KIT_RESOURCES}/ja.lproj/Localizable.strings", lambda content: content[:100]),
     "ja.lproj/Localizable.strings is missing or another"),
    ("a framework without its current version",
     lambda bundle: (bundle / verify_bundle.KIT / "Versions/Current").unlink(),
     "Versions/Current does not lead to A"),
]


class VerifyBundleTests(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.exports = verify_bundle.exported_symbols()

    def faults_after(self, seed):
        with tempfile.TemporaryDirectory() as folder:
            copy = pathlib.Path(folder) / BUNDLE.name
            shutil.copytree(BUNDLE, copy, symlinks=True)
            seed(copy)
            return list(verify_bundle.faults(copy, self.exports))

    def test_finds_nothing_in_the_bundle_as_built(self):
        self.assertEqual(self.faults_after(lambda bundle: None), [])

    def test_reports_each_seeded_fault(self):
        for claim, seed, said in FAULTS:
            with self.subTest(claim):
                found = self.faults_after(seed)
                self.assertTrue(any(said in fault for fault in found), found)

    def test_reads_a_table_of_texts_to_its_end_or_not_at_all(self):
        self.assertEqual(verify_bundle.strings_table('/* a */ "b" = "\\"c\\""; '), {"b": '\\"c\\"'})
        for text in ('"b" = "c"', '"b" "c";', '"b" = "c"; d', '"b" = "c;'):
            self.assertEqual(verify_bundle.strings_table(text), {}, text)


if __name__ == "__main__":
    unittest.main()
