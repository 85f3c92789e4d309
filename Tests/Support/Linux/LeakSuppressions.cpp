/// Compiled into every program that is tested; the leak sanitizer asks for it by this name.
/// Fontconfig keeps its configuration as long as the process, and refers to parts of it by offsets,
/// which the sanitizer cannot follow: it takes them for lost.
extern "C" __attribute__((visibility("default"))) const char*
__lsan_default_suppressions() { // NOLINT(readability-identifier-naming)
    return "leak:libfontconfig";
}
