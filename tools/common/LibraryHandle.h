// LibraryHandle: a loaded library, with which every tool and every test loads the editor library.
#pragma once

#include "editorlib/EditorLibraryNames.h"
#include "editorlib/EntryPoints.h"

#include <dlfcn.h>
#include <string>
#include <utility>

namespace Steinberg::Vst::tools {

/** Closes the file at its end. [any thread, one at a time] */
class LibraryHandle {
public:
    LibraryHandle() = default;
    /** Loads the file; on failure the handle is empty.
        @param mode of dlopen; with RTLD_NOLOAD only a file that is loaded already */
    explicit LibraryHandle(const std::string& file, int mode = RTLD_LAZY)
    {
        // A name without a folder would be looked for where the system keeps its libraries.
        const auto path = file.find('/') == std::string::npos ? "./" + file : file;
        handle = dlopen(path.c_str(), mode);
        const char* message = handle ? nullptr : dlerror();
        words = message ? message : "";
    }
    ~LibraryHandle() { close(); }
    LibraryHandle(LibraryHandle&& other) noexcept
    : handle(std::exchange(other.handle, nullptr))
    , words(std::move(other.words))
    {
    }
    LibraryHandle& operator=(LibraryHandle&&) = delete;

    explicit operator bool() const { return handle != nullptr; }
    void* get() const { return handle; }
    /** The loader's own words when it did not load. */
    const std::string& refusal() const { return words; }

    /** A function of the library; null when it has none of this name, or is not loaded. */
    template <typename Function>
    Function find(const char* name) const
    {
        return handle ? reinterpret_cast<Function>(dlsym(handle, name)) : nullptr;
    }
    GetEditorConnect connectEntry() const { return find<GetEditorConnect>(connectFuncName); }
    GetObserver observerEntry() const { return find<GetObserver>(observerFuncName); }

    void close()
    {
        if (handle)
            dlclose(std::exchange(handle, nullptr));
    }

    /** Whether some part of this process has the file loaded. */
    static bool isLoaded(const std::string& file = editorLibraryPath())
    {
        return static_cast<bool>(LibraryHandle(file, RTLD_LAZY | RTLD_NOLOAD));
    }

private:
    void* handle = nullptr;
    std::string words;
};

} // namespace Steinberg::Vst::tools
