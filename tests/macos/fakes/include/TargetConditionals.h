// Tells macOS sources in a Linux program that this is a Mac with an Intel processor. The names are
// those of Apple's header, which scripts/fetch-darwin fetches.
#pragma once

#define TARGET_OS_MAC 1
#define TARGET_OS_IPHONE 0
#define TARGET_CPU_X86 0
#define TARGET_CPU_X86_64 1
#define TARGET_CPU_ARM 0
#define TARGET_CPU_ARM64 0
