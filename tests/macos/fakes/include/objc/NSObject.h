// The root class, for GNU's Objective-C run-time.
#pragma once

@interface NSObject {
    Class isa;
}
+ (instancetype)alloc;
@end
