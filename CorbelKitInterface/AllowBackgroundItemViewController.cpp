#include "CorbelKitInterface/AllowBackgroundItemViewController.h"

#include "CorbelKit/Services/Const.h"
#include "CorbelKit/Services/HelpPage.h"
#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/AppService.h"
#include "Platform/FileManager.h"
#include "Platform/MainThread.h"
#include "Platform/Workspace.h"

#include <chrono>
#include <utility>

namespace CorbelKit {

using Platform::MainThread::check;

AllowBackgroundItemViewController::AllowBackgroundItemViewController(
    std::function<void()> closeWindow)
    : closeWindow_(std::move(closeWindow)) {}

void AllowBackgroundItemViewController::connect(WindowScene& scene) {
    titleTextField = scene.outlet<TextField>("titleTextField");
    subtitleTextField = scene.outlet<TextField>("subtitleTextField");
    okButton = scene.outlet<Button>("okButton");
    systemSettingsButton = scene.outlet<Button>("systemSettingsButton");
    clickImageView = scene.outlet<ImageView>("clickImageView");
    iconImageView = scene.outlet<ImageView>("iconImageView");
    illustrationBox = scene.outlet<Box>("illustrationBox");
    scene.setAction("okAction:", [this] { okAction(); });
    scene.setAction("systemSettingsAction:", [this] { systemSettingsAction(); });
    scene.setAction("help:", [this] { help(); });
}

void AllowBackgroundItemViewController::viewDidLoad() {
    check();
    if (titleTextField) {
        titleTextField->setStringValue(
            localizedString("You will be asked to allow the background item to run."));
    }
    if (subtitleTextField) {
        subtitleTextField->setStringValue(
            localizedString("Allow this option in the displayed notification or in System "
                            "Settings. Then, attempt your action once more."));
    }
    if (okButton)
        okButton->setTitle(localizedString("OK"));
    showIllustration();
    showSettings();
}

void AllowBackgroundItemViewController::viewDidAppear() {
    check();
    if (okButton)
        okButton->takeFocus();
}

void AllowBackgroundItemViewController::showIllustration() const {
    if (!clickImageView)
        return;
    clickImageView->showSymbol("cursorarrow.click.2", {});
    clickImageView->addBounceUpByLayer(EffectRepeat::isEndlessAvailable()
                                           ? EffectRepeat::endlessly(std::chrono::seconds(1))
                                           : EffectRepeat::times(6));
}

void AllowBackgroundItemViewController::showSettings() const {
    const auto settings =
        Platform::Workspace::urlForApplication(Const::App::Identifier::systemSettings);
    // The constant is in English where there is no such application.
    const auto name =
        settings ? Const::App::Name::systemSettings() : localizedString("System Settings");
    if (systemSettingsButton) {
        systemSettingsButton->setTitle(name);
        systemSettingsButton->setHidden(!Platform::AppService::hasSystemSettingsLoginItems());
    }
    if (!iconImageView)
        return;
    const bool hasIcon = settings && Platform::FileManager::fileExists(*settings) &&
                         iconImageView->showApplicationIcon(*settings, name);
    if (!hasIcon)
        iconImageView->showSymbol("checkmark.square", name);
    iconImageView->setAccessibilityRole(AccessibilityRole::image);
}

void AllowBackgroundItemViewController::okAction() {
    check();
    closeWindow_();
}

void AllowBackgroundItemViewController::systemSettingsAction() {
    check();
    closeWindow_();
    Platform::AppService::openSystemSettingsLoginItems();
}

void AllowBackgroundItemViewController::help() {
    check();
    closeWindow_();
    if (const auto page = helpPage("allowbackgrounditem"))
        Platform::Workspace::open(*page);
}

} // namespace CorbelKit
