// LoadedLibrary: the scripted library that stands under a path as a file, as the plug-in will load
// it, and the ScriptedLibrary behind it.
//
//   doubles::LoadedLibrary loaded(trace);             // the fixed path; or LoadedLibrary(trace,
//   file) ASSERT_TRUE(loaded); loaded->latencyMode = 2;   ...plug-in...
//   EXPECT_EQ(trace.count("library.start()"), 1u);
//
// Which file it is decides what it lacks: vstk2x_scripted_library, ..._without_connect,
// ..._without_observer, ..._null_connection.
#pragma once

#include "tests/doubles/ScriptedLibrary.h"

namespace doubles {

/** Holds the file loaded, so that records survive the plug-in's own closing. The library behind is
    new for each LoadedLibrary as far as tests can tell: it is renewed here and at the end. */
class LoadedLibrary {
public:
    static constexpr const char* kPath = "/Library/Application Support/Tavrin/VST/RDL3_RDL5/"
                                         "libvst_rdl3_rdl5_vstserver.1.dylib";

    explicit LoadedLibrary(Trace& trace, const std::string& filePath = kPath);
    ~LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    explicit operator bool() const { return library != nullptr; }
    ScriptedLibrary* operator->() const { return library; }
    ScriptedLibrary& operator*() const { return *library; }
    void* handle() const { return file; }

    /** Lets go of the file; whether something else still holds it loaded. */
    bool closeAndAskWhetherStillLoaded();

private:
    const std::string path;
    void* file;
    ScriptedLibrary* library = nullptr;
};

} // namespace doubles
