#include "CorbelKitInterface/AllowBackgroundItemViewController.h"

#include <gtest/gtest.h>

namespace {

using CorbelKit::AllowBackgroundItemViewController;

// A layout of another make may lack any of the views.
TEST(AllowBackgroundItemViewController, DoesWithoutTheOutletsThatAreNotConnected) {
    int closed = 0;
    AllowBackgroundItemViewController controller([&closed] { ++closed; });
    EXPECT_FALSE(controller.titleTextField || controller.subtitleTextField || controller.okButton ||
                 controller.systemSettingsButton || controller.clickImageView ||
                 controller.iconImageView || controller.illustrationBox);
    controller.viewDidLoad();
    controller.viewDidAppear();
    controller.okAction();
    EXPECT_EQ(closed, 1);
}

} // namespace
