#pragma once

#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>

/// The objects through which the system calls back. The platform has classes for them; a program
/// that wants classes under names of its own chooses those, each of the same protocol, in their
/// `load`, and forwards from them what they are notified of.
namespace Platform::SystemEvents {

/// @{
/// Before `main`. There is one object of each class, which is made by `init` and never released.
void chooseApplicationDelegate(Class<NSApplicationDelegate> delegate);
void chooseNotificationDelegate(Class<UNUserNotificationCenterDelegate> delegate);
void chooseSettingsObserver(Class observer);
/// @}

/// @{
/// Of the application's delegate. Main thread.
void applicationDidFinishLaunching() noexcept;
void applicationWillTerminate() noexcept;
/// @}

/// Of the delegate of the notification centre. Any thread; the handler is called once, on another.
void didReceiveNotificationResponse(UNNotificationResponse* response,
                                    void (^completionHandler)(void)) noexcept;

/// Of the observer of key paths, for any of them. Any thread.
void settingDidChange() noexcept;

} // namespace Platform::SystemEvents
