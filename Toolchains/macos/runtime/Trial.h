#pragma once

#import <Foundation/Foundation.h>

/// What a trial sees of a process over the stand-ins, and how it acts on it.
namespace CorbelTrial {

/// One line on standard output, at once.
void print(NSString* line);

/// AppKit refuses another thread by an exception: "Main Thread Checker".
void requireMainThread();

/// What the user does, one line an action, in the file that CORBEL_USER_ACTIONS names (a FIFO):
///   answer <action> <identifier>   presses a button of the notification with the identifier
///   allow                          answers the request for permission, where it is late
///   appearance dark|light          chooses how applications look
void followUserActions();

} // namespace CorbelTrial
