#include "tests/macos/fakes/FakeFileManager.h"

#include "tests/macos/fakes/FakeObject.h"

#include <CoreServices/CoreServices.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace files = std::filesystem;

namespace {

// Apple's MacErrors.h: fnfErr, bdNamErr, errFSNotAFolder, afpAccessDenied. Which call returns which
// of them is a belief; the plug-in compares only with dupFNErr.
constexpr OSErr kFileNotFound = -43;
constexpr OSErr kBadName = -37;
constexpr OSErr kNoFolder = -1407;
constexpr OSErr kAccessDenied = -5000;

/** An FSRef holds a mark and an index into this list. */
constexpr char kMark[] = "FSRef";
std::vector<std::string> paths;

void fill(FSRef* ref, const std::string& path)
{
    const size_t number = paths.size();
    paths.push_back(path);
    std::memcpy(ref->hidden, kMark, sizeof(kMark));
    std::memcpy(ref->hidden + sizeof(kMark), &number, sizeof(number));
}

/** Empty when no call filled the reference. */
std::string pathOf(const FSRef* ref)
{
    size_t number = 0;
    std::memcpy(&number, ref->hidden + sizeof(kMark), sizeof(number));
    const bool isFilled = std::memcmp(ref->hidden, kMark, sizeof(kMark)) == 0;
    return isFilled ? paths.at(number) : "";
}

/** The name in a path: a slash in the File Manager's name is a colon there (Apple's Technical Q&A
    QA1203). Empty for a name with a colon, which separates the levels of the File Manager's own
    paths; that it refuses such a name is a belief. */
std::string nameOf(UniCharCount length, const UniChar* units)
{
    auto name = doubles::utf8From(std::u16string(units, units + length));
    if (name.find(':') != std::string::npos)
        return {};
    std::replace(name.begin(), name.end(), '/', ':');
    return name;
}

/** The path of the entry of that name, compared as on the volume; empty if there is none. */
std::string entryOf(const std::string& folder, const std::string& name)
{
    const auto path = folder + "/" + name;
    std::error_code error;
    if (files::exists(files::symlink_status(path, error)))
        return path;
    const auto& keyOf = doubles::FakeFileManager::keyOf;
    if (!keyOf)
        return {};
    for (const auto& entry : files::directory_iterator(folder, error))
        if (keyOf(entry.path().filename().string()) == keyOf(name))
            return entry.path().string();
    return {};
}

OSErr checkFolder(const std::string& folder)
{
    if (folder.empty())
        return kFileNotFound;
    return files::is_directory(folder) ? OSErr{noErr} : kNoFolder;
}

} // namespace

void doubles::FakeFileManager::reset()
{
    paths.clear();
    created = 0;
    keyOf = nullptr;
    beforeCreation = nullptr;
}

OSStatus FSPathMakeRef(const UInt8* path, FSRef* ref, Boolean*)
{
    const files::path whole = reinterpret_cast<const char*>(path);
    std::string found;
    for (const auto& level : whole.relative_path())
        if (found = entryOf(found, level.string()); found.empty())
            return kFileNotFound;
    std::error_code error;
    const auto resolved = files::canonical(found, error);
    if (error || !whole.is_absolute())
        return kFileNotFound;
    fill(ref, resolved.string());
    return noErr;
}

OSErr FSMakeFSRefUnicode(const FSRef* parent, UniCharCount length, const UniChar* name,
                         TextEncoding, FSRef* ref)
{
    const auto folder = pathOf(parent);
    if (const OSErr result = checkFolder(folder))
        return result;
    const auto leaf = nameOf(length, name);
    if (leaf.empty())
        return kBadName;
    const auto path = entryOf(folder, leaf);
    if (path.empty())
        return kFileNotFound;
    fill(ref, path);
    return noErr;
}

OSErr FSCreateDirectoryUnicode(const FSRef* parent, UniCharCount length, const UniChar* name,
                               FSCatalogInfoBitmap, const FSCatalogInfo*, FSRef* ref, FSSpecPtr,
                               UInt32*)
{
    using doubles::FakeFileManager;
    if (const auto other = std::exchange(FakeFileManager::beforeCreation, nullptr))
        other();
    const auto folder = pathOf(parent);
    if (const OSErr error = checkFolder(folder))
        return error;
    const auto mode = files::status(folder).permissions();
    if ((mode & files::perms::owner_write) == files::perms::none)
        return kAccessDenied;
    const auto leaf = nameOf(length, name);
    if (leaf.empty())
        return kBadName;
    if (!entryOf(folder, leaf).empty())
        return dupFNErr;
    const auto path = folder + "/" + leaf;
    if (mkdir(path.c_str(), 0755) != 0)
        return errno == EEXIST ? OSErr{dupFNErr} : kBadName;
    ++FakeFileManager::created;
    fill(ref, path);
    return noErr;
}
