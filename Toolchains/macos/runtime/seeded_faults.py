#!/usr/bin/env python3
"""Seeds one fault at a time in the macOS back end and sees that the check of it notices. For a tree whose
Scripts/check-macos-runtime passes; leaves it as it was. Usage: seeded_faults.py [number...]"""
import pathlib
import subprocess
import sys

TREE = pathlib.Path(__file__).resolve().parents[3]
BACK_END = TREE / "Platform/macOS"

# What is seeded, the file, its text, the text in place of that, and the tests that are run.
FAULTS = [
    ("an unreleased source", "ChildProcess.mm",
     "dispatch_source_cancel(source);", "", "LongLife.HoldsOnTo|Subprocess"),
    ("no event handler where a folder changed before it was watched", "FileSystemObjectSource.mm",
     "if (!isSame(lastWritten(fileDescriptor), written))", "if (isSame(lastWritten(fileDescriptor), written))",
     "FileSystemObjectSource"),
    ("a forgotten completion call", "UserNotificationCenter.mm",
     "answer, [complete] { complete(); });", "answer, [complete] { static_cast<void>(complete); });", "MacAgent"),
    ("permission turned round", "UserNotificationCenter.mm",
     "post(completion, portableSettings(settings));", "post(completion, settings == nil ? portableSettings(settings) : decltype(portableSettings(settings)){});", "MacAgent"),
    ("the main queue in place of a serial one", "DispatchQueue.mm",
     "dispatch_queue_create(label.c_str(), DISPATCH_QUEUE_SERIAL)", "(static_cast<void>(label), dispatch_get_main_queue())", "DispatchQueue"),
    ("the application's delegate held by nobody", "Application.mm",
     "static const id<NSApplicationDelegate> events", "const id<NSApplicationDelegate> events", "MacAgent"),
    ("a delayed task that is never released", "DispatchQueue.mm",
     "time !=\n        DISPATCH_TIME_FOREVER", "true", "DispatchQueue"),
    ("an event stream that is not let go of", "FileSystemEventStream.mm",
     "FSEventStreamRelease(stream);", "", "FileSystemEventStream"),
    ("a second process that is let in", "SoleInstance.mm",
     "return ended->try_acquire_for(patience);", "return ended->try_acquire_for(patience) || true;", "MacAgent"),
    ("colours of the user interface turned round", "EffectiveAppearance.mm",
     "? Appearance::Name::darkAqua", "? Appearance::Name::aqua", "Desktop"),
    ("a descriptor that children inherit", "ChildProcess.mm",
     "flags | POSIX_SPAWN_CLOEXEC_DEFAULT", "flags", "Subprocess|LegacyCleanUp"),
    ("a request to end before the system knows of its source", "Application.mm",
     "awaited->wait();", "", "MacAgent.EndsAt"),
    ("settings of every program", "NativeSetting.mm",
     "[defaults persistentDomainForName:name][text]", "[defaults objectForKey:text]", "UserDefaultsTest.ReadsItsOwn"),
]


def run(command):
    return subprocess.run(command, cwd=TREE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)


def first_sign(output):
    for line in output.splitlines():
        if "***" in line or "Sanitizer: " in line or ": Failure" in line:
            return line.strip()
    return "no sign"


def build():
    return run(["cmake", "--build", "--preset", "macos-runtime", "--target", "vesper-pro-agent", "PlatformTests",
                "AgentTrialTests"])


def check(fault):
    what, name, text, seeded, tests = fault
    path = BACK_END / name
    sound = path.read_text()
    assert sound.count(text) >= 1, f"{name} has no {text}"
    try:
        path.write_text(sound.replace(text, seeded, 1))
        built = build()
        if built.returncode != 0:
            return False, "does not build: " + "".join(l for l in built.stdout.splitlines(True) if "error:" in l)
        tested = run(["ctest", "--preset", "macos-runtime", "--parallel", "4", "-R", tests, "-E", "_NOT_BUILT$"])
        return tested.returncode != 0, first_sign(tested.stdout)
    finally:
        path.write_text(sound)


def main():
    chosen = [int(number) for number in sys.argv[1:]] or range(1, len(FAULTS) + 1)
    missed = 0
    for number in chosen:
        is_caught, sign = check(FAULTS[number - 1])
        missed += not is_caught
        print(f"{number}. {FAULTS[number - 1][0]}: {'caught' if is_caught else 'MISSED'} ({sign})", flush=True)
    build()
    sys.exit(1 if missed else 0)


if __name__ == "__main__":
    main()
