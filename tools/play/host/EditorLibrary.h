// EditorLibrary: the editor library as the host's extension keeps it loaded.
#pragma once

#include "editorlib/VstIEditorConnect.h"

#include <memory>
#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** Loads the library and closes it at its end; every connection of it must be over by then. */
class EditorLibrary {
public:
    /** @throws Failure when the file is missing, cannot be loaded or lacks its entry point */
    explicit EditorLibrary(const std::string& path);
    ~EditorLibrary();
    EditorLibrary(const EditorLibrary&) = delete;
    EditorLibrary& operator=(const EditorLibrary&) = delete;

    /** A connection of its own for one plug-in, which ends with destroy(); null when the library
        gives none. */
    VstIEditorConnect* connect() const;

    void* handle() const { return library; }

    /** Whether some part of this process has the library at path loaded. */
    static bool isLoaded(const std::string& path);

private:
    void* library;
    void (*entry)(VstIEditorConnect**);
};

/** Where the editor library is installed, for every program of the machine. */
std::string installedEditorLibrary();

} // namespace play
} // namespace Vst
} // namespace Steinberg
