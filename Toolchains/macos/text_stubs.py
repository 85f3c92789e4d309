#!/usr/bin/env python3
"""Writes what the linker needs to know of the system's frameworks: one text stub for each folder of
stub headers, which exports what those headers declare and no more, and one each for the Objective-C
runtime and for expat, which is part of the system and whose header is everywhere the same. Beside that, the
headers of the JSON library, which is nothing else.
Usage: text_stubs.py <folder of stub headers> <folder to write>"""
import pathlib
import re
import shutil
import sys

TARGETS = "[ arm64-macos, x86_64-macos ]"
FRAMEWORK_VERSION = {"AppKit": "C", "Foundation": "C"}  # the others are at A

# What the compiler refers to and no header declares.
IMPLIED_SYMBOLS = {
    "CoreFoundation": ["___CFConstantStringClassReference", "___NSArray0__", "___NSDictionary0__",
                       "_OBJC_EHTYPE_$_NSException"],
}
RUNTIME_SYMBOLS = """
_OBJC_EHTYPE_id ___objc_personality_v0 __objc_empty_cache
_class_addMethod _class_getInstanceMethod _class_getName _method_getImplementation
_object_getClass _object_getClassName _objc_getClass _objc_setHook_getImageName _sel_registerName
_objc_alloc _objc_alloc_init _objc_allocWithZone _objc_opt_new _objc_opt_class
_objc_opt_isKindOfClass _objc_opt_respondsToSelector _objc_opt_self
_objc_msgSend _objc_msgSendSuper2 _objc_msgSend_fpret _objc_msgSend_stret _objc_msgSendSuper2_stret
_objc_autorelease _objc_autoreleasePoolPop _objc_autoreleasePoolPush _objc_autoreleaseReturnValue
_objc_claimAutoreleasedReturnValue _objc_unsafeClaimAutoreleasedReturnValue
_objc_retain _objc_release _objc_retainAutorelease _objc_retainAutoreleaseReturnValue
_objc_retainAutoreleasedReturnValue _objc_retainBlock
_objc_storeStrong _objc_storeWeak _objc_initWeak _objc_copyWeak _objc_moveWeak _objc_destroyWeak
_objc_loadWeak _objc_loadWeakRetained
_objc_getProperty _objc_setProperty_atomic _objc_setProperty_atomic_copy
_objc_setProperty_nonatomic _objc_setProperty_nonatomic_copy _objc_copyStruct
_objc_copyCppObjectAtomic _objc_enumerationMutation
_objc_begin_catch _objc_end_catch _objc_exception_throw _objc_exception_rethrow _objc_terminate
_objc_sync_enter _objc_sync_exit
""".split()


def declarations(folder):
    """The text of a framework's stub headers without comments and preprocessor lines."""
    text = "\n".join(header.read_text() for header in sorted(folder.glob("*.h")))
    return re.sub(r"//[^\n]*|/\*.*?\*/|^\s*#(?:[^\n\\]|\\.)*", "", text, flags=re.S | re.M)


def exported_classes(text):
    """Classes that are defined here: with a superclass, unlike categories and forward mentions."""
    return set(re.findall(r"@interface\s+(\w+)\s*(?:<[^>{]*>)?\s*:", text))


def exported_symbols(text):
    """Functions and variables, which the stub headers mark as the system's own headers do."""
    marked = re.findall(r"\w+_EXPORT\s[^;(]*?\b(\w+)\s*(?:;|\([^;]*;|__attribute__)", text)
    return {"_" + name for name in marked}


def write_stub(path, install_name, symbols, classes):
    rows = [("symbols", symbols), ("objc-classes", classes)]
    exports = "".join(f"    {key}: [ {', '.join(sorted(names))} ]\n" for key, names in rows if names)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(f"--- !tapi-tbd\ntbd-version: 4\ntargets: {TARGETS}\n"
                    f"install-name: '{install_name}'\n"
                    f"exports:\n  - targets: {TARGETS}\n{exports}...\n")


def write_framework(folder, sdk):
    name = folder.name
    text = declarations(folder)
    bundle = f"System/Library/Frameworks/{name}.framework"
    version = FRAMEWORK_VERSION.get(name, "A")
    write_stub(sdk / bundle / f"{name}.tbd", f"/{bundle}/Versions/{version}/{name}",
               exported_symbols(text) | set(IMPLIED_SYMBOLS.get(name, [])), exported_classes(text))


def write_expat(sdk):
    (sdk / "usr/include").mkdir(parents=True, exist_ok=True)
    for name in ("expat.h", "expat_external.h"):
        shutil.copy(f"/usr/include/{name}", sdk / "usr/include")
    header = (sdk / "usr/include/expat.h").read_text()
    text = re.sub(r"XML_ATTR_\w+(\([^)]*\))?", "", header)
    functions = re.findall(r"^XMLPARSEAPI\([^)]*\)\s+(\w+)\(", text, flags=re.M)
    write_stub(sdk / "usr/lib/libexpat.tbd", "/usr/lib/libexpat.1.dylib",
               ["_" + name for name in functions], [])


def copy_json_headers(sdk):
    shutil.copytree("/usr/include/nlohmann", sdk / "usr/include/nlohmann", dirs_exist_ok=True)


def write_all(headers, sdk):
    for folder in sorted(path for path in headers.iterdir() if path.is_dir()):
        write_framework(folder, sdk)
    write_stub(sdk / "usr/lib/libobjc.tbd", "/usr/lib/libobjc.A.dylib", RUNTIME_SYMBOLS, ["NSObject"])
    write_expat(sdk)
    copy_json_headers(sdk)


if __name__ == "__main__":
    write_all(*map(pathlib.Path, sys.argv[1:]))
