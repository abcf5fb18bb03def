#include "tests/macos/fakes/FakeFileManager.h"

#include "tests/macos/fakes/FakeObject.h"

#include <CoreServices/CoreServices.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace files = std::filesystem;

namespace {

constexpr OSErr kFileNotFound = -43;
constexpr OSErr kBadName = -37;
constexpr OSErr kNoFolder = -1407;
constexpr OSErr kAccessDenied = -5000;

/** A reference is a mark and the number of a path in this list. */
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

std::string nameOf(UniCharCount length, const UniChar* units)
{
    return doubles::utf8From(std::u16string(units, units + length));
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
    beforeCreation = nullptr;
}

OSStatus FSPathMakeRef(const UInt8* path, FSRef* ref, Boolean*)
{
    const std::string text = reinterpret_cast<const char*>(path);
    std::error_code error;
    const auto resolved = files::canonical(text, error);
    if (error)
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
    const auto path = folder + "/" + nameOf(length, name);
    std::error_code error;
    if (!files::exists(files::symlink_status(path, error)))
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
    const auto path = folder + "/" + nameOf(length, name);
    if (mkdir(path.c_str(), 0755) != 0)
        return errno == EEXIST ? OSErr{dupFNErr} : kBadName;
    ++FakeFileManager::created;
    fill(ref, path);
    return noErr;
}
