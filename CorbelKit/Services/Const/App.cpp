#include "CorbelKit/Services/Const/App.h"

#include "Platform/FileManager.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/Workspace.h"

namespace CorbelKit::Const::App::Name {
namespace {

std::string nameOfSystemSettings() {
    const auto application = Platform::Workspace::urlForApplication(Identifier::systemSettings);
    if (!application)
        return "System Settings";
    auto name = Platform::FileManager::displayName(*application);
    if (name.ends_with(suffix))
        name.resize(name.size() - suffix.size());
    return name;
}

} // namespace

const std::string& systemSettings() {
    static const Platform::NeverDestroyed<std::string> name(nameOfSystemSettings());
    return name.get();
}

} // namespace CorbelKit::Const::App::Name
