// Compiled into every program that is tested; the sanitizers ask for these by their names.
// NOLINTBEGIN(readability-identifier-naming)

/// Fontconfig keeps its configuration as long as the process, and refers to parts of it by offsets,
/// which the sanitizer cannot follow: it takes them for lost.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

/// GLib orders its threads by atomic operations that the sanitizer does not see: it takes a lock
/// that is made at its first use, for one, to be made while others use it.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
    return "called_from_lib:libglib-2.0.so";
}

// NOLINTEND(readability-identifier-naming)
