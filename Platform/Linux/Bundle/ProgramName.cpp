#include "Platform/Linux/Bundle/ProgramName.h"

#include "Platform/Bundle.h"

#include <cerrno>

namespace Platform {

std::string programName() {
    auto name = Bundle::main().text("CFBundleName");
    return !name.empty() ? name : program_invocation_short_name;
}

} // namespace Platform
