// VSTK2X_SANITIZED: defined in a build with the address, leak or thread sanitizer, for tests of
// what these do not allow: little address space, or memory that the SDK never frees.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VSTK2X_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VSTK2X_SANITIZED 1
#endif
#endif
