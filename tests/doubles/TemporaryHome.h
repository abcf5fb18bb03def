// TemporaryHome: a home folder for one test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace doubles {

/** Makes the folder, names it in HOME, and takes both back. One at a time. */
class TemporaryHome {
public:
    TemporaryHome()
    {
        auto pattern = (std::filesystem::temp_directory_path() / "home-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("no temporary folder");
        root = pattern;
        std::filesystem::create_directory(home());
        if (const char* value = std::getenv("HOME")) {
            hadHome = true;
            before = value;
        }
        set(home());
    }

    ~TemporaryHome()
    {
        if (hadHome)
            set(before);
        else
            unset();
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    std::string home() const { return root + "/user"; }
    std::string presetFolder() const
    {
        return home() + "/Library/Audio/Presets/Tavrin Corporation/RDL3_RDL5 VST";
    }

    static void set(const std::string& value) { setenv("HOME", value.c_str(), 1); }
    static void unset() { unsetenv("HOME"); }

    /** Everything below the temporary folder but folders, relative to the preset folder where it is
        in it and otherwise as "OUTSIDE" and the whole path. */
    std::set<std::string> files() const
    {
        std::set<std::string> result;
        const auto folder = presetFolder() + "/";
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
            if (entry.is_directory())
                continue;
            const auto path = entry.path().string();
            const bool inside = path.compare(0, folder.size(), folder) == 0;
            result.insert(inside ? path.substr(folder.size()) : "OUTSIDE " + path);
        }
        return result;
    }

    /** A file of the preset folder. */
    std::string content(const std::string& name) const
    {
        std::ifstream file(presetFolder() + "/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void write(const std::string& name, const std::string& content) const
    {
        std::ofstream(presetFolder() + "/" + name, std::ios::binary) << content;
    }

private:
    std::string root;
    std::string before;
    bool hadHome = false;
};

} // namespace doubles
