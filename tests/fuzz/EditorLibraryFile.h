// EditorLibraryFile: stands in for the editor library's file. When the plug-in opens its fixed
// path, it gets this program's own handle.
#pragma once

namespace fuzz {

/** While one lives, opening the editor library's path works as said and is counted. One at a time;
    every other path is the system's. */
class EditorLibraryFile {
public:
    explicit EditorLibraryFile(bool exists);
    EditorLibraryFile(const EditorLibraryFile&) = delete;
    EditorLibraryFile& operator=(const EditorLibraryFile&) = delete;
    ~EditorLibraryFile();

    /** How often it is open. */
    int openCount() const;
};

} // namespace fuzz
