#include "tools/check-library/PresetFolderCheck.h"

#include "tools/common/Failure.h"
#include "tools/common/PresetPlace.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

namespace fs = std::filesystem;

constexpr size_t kBankFile = size_t{64} * 1024; ///< more than a preset file has

/** A file that goes away with this object. */
class TrialFile {
public:
    explicit TrialFile(const std::string& folder)
    : path(folder + "/.check-library-XXXXXX")
    , descriptor(mkstemp(path.data()))
    {
    }
    ~TrialFile()
    {
        if (descriptor < 0)
            return;
        close(descriptor);
        unlink(path.c_str());
    }
    TrialFile(const TrialFile&) = delete;
    TrialFile& operator=(const TrialFile&) = delete;

    /** Writes through to the disk. @return whether that worked; errno says why not */
    bool take(const std::string& bytes) const
    {
        if (descriptor < 0)
            return false;
        errno = ENOSPC; // for a write that is cut short
        return write(descriptor, bytes.data(), bytes.size()) ==
                   static_cast<ssize_t>(bytes.size()) &&
               fsync(descriptor) == 0;
    }

private:
    std::string path;
    const int descriptor;
};

/** The folder itself, or the lowest folder above it that exists. */
std::string standingPartOf(const std::string& folder)
{
    fs::path standing = folder;
    std::error_code error;
    while (standing.has_relative_path() && !fs::exists(standing, error))
        standing = standing.parent_path();
    return standing.string();
}

std::string remedyOf(int error)
{
    if (error == ENOSPC || error == EDQUOT)
        return "Make room on that disk.";
    if (error == EROFS)
        return "Make that disk writable.";
    return "Give yourself the right to write there (in the Finder: Get Info, Sharing & "
           "Permissions; in a terminal: chmod u+w).";
}

} // namespace

Finding checkPresetFolder()
{
    std::string folder;
    try {
        folder = tools::presetFolder(VstK2xPresetCreater::kUserFolder);
    } catch (const tools::Failure& failure) {
        return bad("preset-folder", failure.what(), "Set HOME to your home folder.");
    }
    const auto standing = standingPartOf(folder);
    std::error_code error;
    if (!fs::is_directory(standing, error) || standing == "/")
        return bad("preset-folder",
                   "The preset folder \"" + folder +
                       "\" cannot be made: " + tools::obstacleTo(folder),
                   "Move away what is in its place.");
    const TrialFile file(standing);
    if (!file.take(std::string(kBankFile, '\0'))) {
        const int reason = errno;
        return bad("preset-folder",
                   "Nothing can be stored in the preset folder \"" + folder + "\": \"" + standing +
                       "\" cannot be written to: " + std::strerror(reason) + ".",
                   remedyOf(reason));
    }
    const bool stands = standing == folder;
    return good("preset-folder",
                "The preset folder \"" + folder + "\" " +
                    (stands ? "can be written to." : "will be made when it is needed."),
                {{"path", folder}, {"exists", stands}});
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
