"""That the check of the declarations can fail: each row seeds one fault in sound declarations."""
import pathlib
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))

import check_declarations
import declaration_table
import stub_declarations
import toolchain

FAULTS = [
    # what is wrong, what stood there, what is put there, what the check must name
    ("a misspelt selector", "hasPrefix:", "hasPrefixx:", "-hasPrefixx:"),
    ("a lost colon", "initWithSuiteName:(NSString*)suite", "initWithSuiteName", "-initWithSuiteName"),
    ("an argument too many", "hasPrefix:(NSString*)string", "hasPrefix:(NSString*)string of:(id)x",
     "-hasPrefix:of:"),
    ("a class method for an instance method", "- (void)setObject", "+ (void)setObject",
     "+setObject:forKey:"),
    ("an instance method for a class method", "+ (UNUserNotificationCenter*)current",
     "- (UNUserNotificationCenter*)current", "-currentNotificationCenter"),
    ("float for double", "(double)value", "(float)value", "+numberWithDouble:"),
    ("int for NSInteger", "NSInteger integerValue", "int integerValue", "-integerValue"),
    ("unsigned for signed", "NSInteger integerValue", "NSUInteger integerValue", "-integerValue"),
    ("an integer for an object", "(NSArray*)identifiers", "(NSUInteger)identifiers",
     "-removePendingNotificationRequestsWithIdentifiers:"),
    ("a lost pointer", "(NSError**)error", "(NSError*)error", "-removeItemAtPath:error:"),
    ("another result", "(NSTimeInterval)timeInterval", "(NSInteger)timeInterval",
     "-timeIntervalSinceDate:"),
    ("a block that takes less", "(BOOL granted, NSError* error)", "(BOOL granted)",
     "-requestAuthorizationWithOptions:"),
    ("a block that takes another kind", "(BOOL granted,", "(double granted,",
     "-requestAuthorizationWithOptions:"),
    ("another value", "OptionAlert = 4", "OptionAlert = 2", "UNAuthorizationOptionAlert"),
    ("a constant that does not exist", "OptionBadge", "OptionBatch", "UNAuthorizationOptionBatch"),
    ("another superclass", "NSNumber : NSValue", "NSNumber : NSObject", "class NSNumber"),
    ("a class that does not exist", "NSFileManager", "NSFolderManager", "class NSFolderManager"),
    ("a protocol's misspelt selector", "openSettingsForNotification", "openSettings",
     "-userNotificationCenter:openSettings:"),
    ("a variable that does not exist", "NSCocoaErrorDomain", "NSCocoaDomain", "NSCocoaDomain"),
    ("a variable of another kind", "NSString* const NSCocoa", "const NSInteger NSCocoa",
     "NSCocoaErrorDomain"),
    ("a function's lost argument", "NSHomeDirectoryForUser(NSString* userName)",
     "NSHomeDirectoryForUser(void)", "NSHomeDirectoryForUser"),
]


class CheckDeclarationsTests(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.table = declaration_table.Table(toolchain.declaration_table())
        cls.sound = (HERE / "Sound.h").read_text()

    def differences(self, text):
        with tempfile.TemporaryDirectory() as folder:
            header = pathlib.Path(folder) / "Sound/Sound.h"
            header.parent.mkdir()
            header.write_text(text)
            stubs = stub_declarations.StubDeclarations(folder)
            return check_declarations.Check(self.table, stubs).run()

    def test_finds_nothing_in_sound_declarations(self):
        self.assertEqual(self.differences(self.sound), [])

    def test_reports_each_seeded_fault_and_nothing_else(self):
        for claim, before, after, named in FAULTS:
            with self.subTest(claim):
                self.assertIn(before, self.sound)
                differences = self.differences(self.sound.replace(before, after, 1))
                self.assertEqual(len(differences), 1, differences)
                self.assertIn(named, differences[0])


if __name__ == "__main__":
    unittest.main()
