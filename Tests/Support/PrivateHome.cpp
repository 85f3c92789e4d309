#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>

namespace {

/// Compiled into every program that is tested: what it, and whatever it starts, keeps for the user
/// is not kept with what belongs to whoever runs it, and does not stay.
class PrivateHome {
public:
    PrivateHome() {
        for (const char* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"})
            setenv(name, (folder_ / name).c_str(), 1);
    }

private:
    TestSupport::TemporaryFolder folder_;
};

const PrivateHome home;

} // namespace
