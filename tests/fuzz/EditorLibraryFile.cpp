#include "tests/fuzz/EditorLibraryFile.h"

#include "tests/fuzz/FuzzInput.h"

#include <cstring>
#include <dlfcn.h>

namespace {

constexpr char kFileName[] = "/libvst_rdl3_rdl5_vstserver.1.dylib";

bool fileExists = false;
int opened = 0;
void* lastHandle = nullptr;

bool isEditorLibrary(const char* path)
{
    const char* name = path ? std::strrchr(path, '/') : nullptr;
    return name && std::strcmp(name, kFileName) == 0;
}

template <class Function>
Function next(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

// The program's own functions are found before the system's.
extern "C" {

__attribute__((visibility("default"))) void* dlopen(const char* path, int flags) noexcept
{
    static const auto real = next<void* (*)(const char*, int)>("dlopen");
    if (!isEditorLibrary(path))
        return real(path, flags);
    // Functions are bound when they are called, and others do not see the library's names.
    FUZZ_CHECK(flags == RTLD_LAZY);
    if (!fileExists)
        return nullptr;
    ++opened;
    // The system does not count the program's own handle, which is always the same.
    lastHandle = real(nullptr, flags);
    return lastHandle;
}

__attribute__((visibility("default"))) int dlclose(void* handle) noexcept
{
    static const auto real = next<int (*)(void*)>("dlclose");
    if (handle == lastHandle)
        --opened;
    return real(handle);
}

} // extern "C"

namespace fuzz {

EditorLibraryFile::EditorLibraryFile(bool exists)
{
    fileExists = exists;
    opened = 0;
    lastHandle = nullptr;
}

EditorLibraryFile::~EditorLibraryFile()
{
    fileExists = false;
    lastHandle = nullptr;
}

int EditorLibraryFile::openCount() const
{
    return opened;
}

} // namespace fuzz
