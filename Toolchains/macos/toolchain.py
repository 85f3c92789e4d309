"""Where Scripts/install-macos-toolchain puts what the checks read."""
import os
import pathlib


def folder():
    cache = os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache"
    return pathlib.Path(cache) / "corbel-macos"


def system_headers():
    return str(folder() / "zig/lib/libc/include/any-macos-any")


def libsystem_stub():
    return folder() / "zig/lib/libc/darwin/libSystem.tbd"


def declaration_table():
    return (folder() / "metadata/build/RelWithDebInfo/NativeScript.apple.node/macos-arm64"
            / "NativeScript.framework/Versions/0.1.0/NativeScript")


def stub_headers():
    return pathlib.Path(__file__).resolve().parent / "stubsdk/include"
