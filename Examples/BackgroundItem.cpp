// Shows the window about a new background item, until Control-C: background-item
#include "CorbelKitInterface/AllowBackgroundItem.h"
#include "Platform/Application.h"

#include <memory>

namespace {

class Application final : public Platform::ApplicationDelegate {
public:
    // Where an application registers its background item.
    void applicationDidFinishLaunching() override { CorbelKit::AllowBackgroundItem::show(); }

    void applicationWillTerminate() override {}
};

} // namespace

int main(int argumentCount, char** arguments) {
    return Platform::Application::run(argumentCount, arguments,
                                      [] { return std::make_unique<Application>(); });
}
