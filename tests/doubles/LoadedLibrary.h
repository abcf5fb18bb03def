// LoadedLibrary: the ScriptedLibrary in a library file, which the plug-in loads from the same path.
//
//   doubles::LoadedLibrary loaded(trace);             // the fixed path, or the second argument
//   ASSERT_TRUE(loaded);
//   loaded->latencyMode = 2;
//   ...plug-in...
//   EXPECT_EQ(trace.count("library.start()"), 1u);
//
// Test programs have the path of each such file in a macro with its target's name:
// VSTK2X_SCRIPTED_LIBRARY, VSTK2X_SCRIPTED_LIBRARY_WITHOUT_CONNECT (no getVSTEditorConnectObject),
// ..._WITHOUT_OBSERVER (no getVSTObserverObject), ..._NULL_CONNECTION (gives null).
#pragma once

#include "tests/doubles/ScriptedLibrary.h"
#include "tools/common/LibraryHandle.h"

namespace doubles {

/** Declare it before the plug-in, so that it outlives it. Holds the file loaded, so that its
    records stay when the plug-in closes it. Each one begins with a new ScriptedLibrary. */
class LoadedLibrary {
public:
    /** Where the plug-in looks for it. Lives until the process is gone. */
    static const char* const kPath;

    explicit LoadedLibrary(Trace& trace, const std::string& filePath = kPath);
    ~LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    explicit operator bool() const { return library != nullptr; }
    ScriptedLibrary* operator->() const { return library; }
    ScriptedLibrary& operator*() const { return *library; }
    void* handle() const { return file.get(); }

    /** Lets go of the file; whether something else still holds it loaded. */
    bool closeAndAskWhetherStillLoaded();

    /** Closes the file under kPath as often as somebody left it open. */
    static void closeAll();

private:
    const std::string path;
    Steinberg::Vst::tools::LibraryHandle file;
    ScriptedLibrary* library = nullptr;
};

} // namespace doubles
