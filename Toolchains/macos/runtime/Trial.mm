#include "Trial.h"

#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>
#include <dispatch/dispatch.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>

@interface NSApplication (CorbelTrial)
- (void)useAppearance:(NSAppearanceName)name;
@end

@interface UNUserNotificationCenter (CorbelTrial)
- (void)answer:(NSString*)action identifier:(NSString*)identifier;
- (void)allow;
@end

namespace CorbelTrial {

void print(NSString* line) {
    const std::string text = std::string(line.UTF8String) + "\n";
    static_cast<void>(!write(STDOUT_FILENO, text.data(), text.size()));
}

void requireMainThread() {
    if (![NSThread isMainThread])
        [NSException raise:NSInternalInconsistencyException
                    format:@"AppKit called on another thread"];
}

namespace {

void act(const std::string& line) {
    @autoreleasepool {
        const auto word = line.substr(0, line.find(' '));
        const auto rest = line.substr(std::min(line.size(), word.size() + 1));
        if (word == "appearance") {
            dispatch_async(dispatch_get_main_queue(), ^{
                [NSApp
                    useAppearance:rest == "dark" ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua];
            });
        } else if (word == "allow") {
            [UNUserNotificationCenter.currentNotificationCenter allow];
        } else if (word == "answer") {
            const auto action = rest.substr(0, rest.find(' '));
            const auto identifier = rest.substr(std::min(rest.size(), action.size() + 1));
            [UNUserNotificationCenter.currentNotificationCenter answer:@(action.c_str())
                                                            identifier:@(identifier.c_str())];
        }
    }
}

} // namespace

void followUserActions() {
    const char* const path = std::getenv("CORBEL_USER_ACTIONS");
    if (path == nullptr)
        return;
    std::thread([name = std::string(path)] {
        std::fstream actions(name); // also for writing, so that it has no end
        for (std::string line; std::getline(actions, line);)
            act(line);
    }).detach();
}

} // namespace CorbelTrial

// Where Linux has a service manager to say so to. The linker leads the call here.
extern "C" void announceReadyToTrial() __asm__("__wrap__ZN8Platform11Application13announceReadyEv");
extern "C" void
announceReadyOfSystem() __asm__("__real__ZN8Platform11Application13announceReadyEv");

void announceReadyToTrial() {
    announceReadyOfSystem();
    CorbelTrial::followUserActions();
    const char* const path = std::getenv("NOTIFY_SOCKET");
    if (path == nullptr)
        return;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sendto(descriptor, "READY=1", 7, 0, reinterpret_cast<const sockaddr*>(&address),
           sizeof address);
    close(descriptor);
}
