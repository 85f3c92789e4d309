// Declarations of what this system uses of the framework, and of nothing else. Compared with the
// public metadata by the declaration checker; a build on a Mac uses the system's own headers.
#pragma once

#include <Foundation/Foundation.h>

__attribute__((availability(macos, introduced = 14.0)))
@interface NSSymbolEffect : NSObject <NSCopying>
@end

__attribute__((availability(macos, introduced = 14.0)))
@interface NSSymbolBounceEffect : NSSymbolEffect
+ (instancetype)bounceUpEffect;
- (instancetype)effectWithByLayer;
@end

__attribute__((availability(macos, introduced = 15.0)))
@interface NSSymbolEffectOptionsRepeatBehavior : NSObject <NSCopying>
+ (instancetype)behaviorPeriodicWithDelay:(double)delay;
@end

__attribute__((availability(macos, introduced = 14.0)))
@interface NSSymbolEffectOptions : NSObject <NSCopying>
+ (instancetype)options;
+ (instancetype)optionsWithRepeatCount:(NSInteger)count;
+ (instancetype)optionsWithRepeatBehavior:(NSSymbolEffectOptionsRepeatBehavior*)behavior
    __attribute__((availability(macos, introduced = 15.0)));
@end
