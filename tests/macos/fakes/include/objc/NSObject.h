// The root class, for GNU's Objective-C run-time, whose documentation says how a class begins.
#pragma once

@interface NSObject {
    Class isa;
}
+ (instancetype)alloc;
@end
