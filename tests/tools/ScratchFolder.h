// ScratchFolder: a temporary folder for one test.
#pragma once

#include <filesystem>
#include <string>

namespace doubles {

/** Made by the constructor and removed, with all that is in it, by the destructor. */
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /** The path of a file in it, whether or not there is one. */
    std::string file(const std::string& name) const { return (folder / name).string(); }

    /** Writes a file. @return its path */
    std::string write(const std::string& name, const std::string& bytes) const;

    /** A file's bytes; empty when there is none. */
    static std::string read(const std::string& path);

private:
    std::filesystem::path folder;
};

} // namespace doubles
