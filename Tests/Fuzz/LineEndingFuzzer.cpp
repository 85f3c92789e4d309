#include "Tests/CorbelKit/LineEndingForms.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    if (forms(text) != replacedForms(text))
        std::abort();
    return 0;
}
