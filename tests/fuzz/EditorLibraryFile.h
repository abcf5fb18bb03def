// EditorLibraryFile: the editor library's file, played by this program itself: what the plug-in
// opens under its fixed path is here this program's own handle.
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

    /** How often it was opened less how often it was closed. */
    int openCount() const;
};

} // namespace fuzz
