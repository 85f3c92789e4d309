#include "CorbelKitInterface/macOS/StoryboardControllers.h"

// The storyboard names these classes; what they do is in the portable ones of the same names.

__attribute__((objc_runtime_name("AllowBackgroundItemWindowController")))
@interface AllowBackgroundItemWindow : StoryboardWindowController
@end

@implementation AllowBackgroundItemWindow
@end

__attribute__((objc_runtime_name("AllowBackgroundItemViewController")))
@interface AllowBackgroundItemView : StoryboardViewController
@property(weak) IBOutlet NSTextField* titleTextField;
@property(weak) IBOutlet NSTextField* subtitleTextField;
@property(weak) IBOutlet NSButton* okButton;
@property(weak) IBOutlet NSButton* systemSettingsButton;
@property(weak) IBOutlet NSImageView* clickImageView;
@property(weak) IBOutlet NSImageView* iconImageView;
@property(weak) IBOutlet NSBox* illustrationBox;
@end

@implementation AllowBackgroundItemView

- (IBAction)okAction:(id)sender {
    [self forward:_cmd];
}

- (IBAction)systemSettingsAction:(id)sender {
    [self forward:_cmd];
}

- (IBAction)help:(id)sender {
    [self forward:_cmd];
}

@end
