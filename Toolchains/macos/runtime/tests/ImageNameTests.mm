// Where the kit's code looks for its resources: in the kit's own bundle, not in the program's.

#import <Foundation/Foundation.h>
#include <gmock/gmock.h>
#include <objc/runtime.h>

TEST(ImageName, LeadsFromEachClassOfTheKitToItsFrameworkAndFromNoOther) {
    const std::string framework = "/Contents/Frameworks/CorbelKit.framework/CorbelKit";
    for (const auto* name : {"CorbelKitResourceBundleClass", "XPCConnection", "CorbelApplication",
                             "CorbelAppearanceObserver", "CorbelApplicationEvents",
                             "CorbelNotificationAnswers", "CorbelSettingsObserver"}) {
        ASSERT_NE(objc_getClass(name), nil) << name;
        EXPECT_THAT(class_getImageName(objc_getClass(name)), testing::EndsWith(framework)) << name;
    }
    EXPECT_THAT(class_getImageName(NSObject.class), testing::Not(testing::EndsWith(framework)));
}
