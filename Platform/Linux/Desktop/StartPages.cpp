#include "Platform/Linux/Desktop/StartPages.h"

#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <fstream>
#include <span>
#include <string>

namespace Platform {
namespace {

// A debugger's breakpoints stand in pages that it wrote to behind our back.
bool isDebugged() {
    std::ifstream status("/proc/self/status");
    std::string name;
    int process = 0;
    while (status >> name && name != "TracerPid:")
        status.ignore(1000, '\n');
    return status >> process && process != 0;
}

int releaseObject(dl_phdr_info* object, std::size_t /*size*/, void* /*data*/) {
    static const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    for (const auto& segment : std::span(object->dlpi_phdr, object->dlpi_phnum)) {
        if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0)
            continue;
        const std::size_t start = object->dlpi_addr + segment.p_vaddr;
        const std::size_t offset = start % pageSize;
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the loader gives addresses as numbers
        madvise(reinterpret_cast<void*>(start - offset), segment.p_memsz + offset, MADV_DONTNEED);
    }
    return 0;
}

} // namespace

void releaseStartPages() {
    if (isDebugged())
        return;
    dl_iterate_phdr(releaseObject, nullptr);
}

} // namespace Platform
