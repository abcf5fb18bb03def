// LoadedLibrary: the scripted library that stands under a path as a file, as the plug-in will load
// it, and the ScriptedLibrary behind it.
//
//   doubles::LoadedLibrary loaded(trace);             // the fixed path, or the second argument
//   ASSERT_TRUE(loaded);
//   loaded->latencyMode = 2;
//   ...plug-in...
//   EXPECT_EQ(trace.count("library.start()"), 1u);
//
// Which file stands there decides what it lacks. Test programs know them all by macros with the
// targets' names: VSTK2X_SCRIPTED_LIBRARY, VSTK2X_SCRIPTED_LIBRARY_WITHOUT_CONNECT (the entry
// point), ..._WITHOUT_OBSERVER (the other one), ..._NULL_CONNECTION (stores null).
#pragma once

#include "tests/doubles/ScriptedLibrary.h"
#include "tools/common/LibraryHandle.h"

namespace doubles {

/** Declare it before the plug-in, so that it outlives it. Holds the file loaded, so that records
   survive the plug-in's own closing. The library behind is new for each LoadedLibrary as far as
   tests can tell: it is renewed here and at the end. */
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
