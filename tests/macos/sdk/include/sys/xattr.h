// Extended attributes of files, as far as the tools read them (getxattr(2) of macOS).
#pragma once

#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

ssize_t getxattr(const char* path, const char* name, void* value, size_t size, u_int32_t position,
                 int options);

#ifdef __cplusplus
}
#endif
