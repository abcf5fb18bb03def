#include "platform/PresetFolders.h"

#include "platform/FolderRecursion.h"
#include "presets/VstK2xPresetCreater.h"
#include "tests/doubles/TemporaryHome.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <thread>

using namespace Steinberg::Vst;
using namespace Steinberg::Vst::platform;
using doubles::TemporaryHome;
using testing::ElementsAre;
namespace files = std::filesystem;

namespace {

/** A file system that records the calls and makes nothing. */
struct RecordedSystem {
    using Ref = std::string;
    static inline std::set<std::string> existing;
    static inline std::vector<std::string> calls;

    static bool find(const std::string& path, Ref& ref)
    {
        calls.push_back("find " + path);
        ref = path;
        return existing.count(path) != 0;
    }
    static bool findOrMake(const Ref& parent, const std::string& leaf, Ref& ref)
    {
        calls.push_back("make " + leaf + " in " + parent);
        ref = parent + "/" + leaf;
        return leaf != "forbidden";
    }
};

bool makeRecorded(const std::string& path, std::set<std::string> existing)
{
    RecordedSystem::existing = std::move(existing);
    RecordedSystem::calls.clear();
    std::string ref;
    return makeFolders<RecordedSystem>(path, ref) && ref == path;
}

int create(const std::string& path)
{
    return VstK2xPresetCreater::createPresetDirectoryMac(path, nullptr);
}

} // namespace

TEST(PresetFolders, MakeFoldersMakesMissingParentsFromTheTop)
{
    EXPECT_TRUE(makeRecorded("/a/b/c/d", {"/a"}));
    EXPECT_THAT(RecordedSystem::calls,
                ElementsAre("find /a/b/c", "find /a/b", "find /a", "make b in /a", "make c in /a/b",
                            "make d in /a/b/c"));
}

TEST(PresetFolders, MakeFoldersFailsWhereAParentFails)
{
    EXPECT_FALSE(makeRecorded("/a/forbidden/c", {"/a"}));
    EXPECT_THAT(RecordedSystem::calls,
                ElementsAre("find /a/forbidden", "find /a", "make forbidden in /a"));
    EXPECT_FALSE(makeRecorded("/a/b", {}));
    EXPECT_THAT(RecordedSystem::calls, ElementsAre("find /a", "find "));
    EXPECT_FALSE(makeRecorded("a", {"a"}));
    EXPECT_THAT(RecordedSystem::calls, ElementsAre());
}

TEST(PresetFolders, MakeFoldersTakesPathsBelow1024Bytes)
{
    EXPECT_TRUE(makeRecorded("/a/" + std::string(1020, 'x'), {"/a"}));
    EXPECT_FALSE(makeRecorded("/a/" + std::string(1021, 'x'), {"/a"}));
    EXPECT_THAT(RecordedSystem::calls, ElementsAre());
}

TEST(PresetFolders, CreatePresetDirectoryMacMakesAndFindsFolders)
{
    const TemporaryHome home;
    const auto path = home.home() + "/a/b/\xC3\xA4 c";
    EXPECT_EQ(create(path), 0);
    EXPECT_TRUE(files::is_directory(path));
    EXPECT_EQ(create(path), 0);
#if !defined(__APPLE__)
    FSRef ref;
    EXPECT_EQ(VstK2xPresetCreater::createPresetDirectoryMac(path, &ref), 0);
    EXPECT_EQ(ref.path, path);
#endif
}

#if !defined(__APPLE__) // the Mac's File Manager chooses the permissions
TEST(PresetFolders, CreatePresetDirectoryMacLeavesPermissionsToTheUmask)
{
    const TemporaryHome home;
    const auto before = umask(0002);
    EXPECT_EQ(create(home.home() + "/a"), 0);
    umask(before);
    EXPECT_EQ(files::status(home.home() + "/a").permissions(), files::perms(0775));
}
#endif

TEST(PresetFolders, CreatePresetDirectoryMacTakesWhateverHasTheNameForFound)
{
    const TemporaryHome home;
    std::ofstream(home.home() + "/file") << "x";
    files::create_symlink("nowhere", home.home() + "/link");
    EXPECT_EQ(create(home.home() + "/file"), 0);
    EXPECT_EQ(create(home.home() + "/link"), 0);
    EXPECT_TRUE(files::is_regular_file(home.home() + "/file"));
    // Nothing can be made in them.
    EXPECT_EQ(create(home.home() + "/file/a"), 1);
    EXPECT_EQ(create(home.home() + "/link/a"), 1);
    EXPECT_EQ(create(home.home() + "/file/a/b"), 1);
}

TEST(PresetFolders, CreatePresetDirectoryMacFollowsLinksToFolders)
{
    const TemporaryHome home;
    files::create_directory(home.home() + "/real");
    files::create_directory_symlink(home.home() + "/real", home.home() + "/link");
    EXPECT_EQ(create(home.home() + "/link/a/b"), 0);
    EXPECT_TRUE(files::is_directory(home.home() + "/real/a/b"));
}

TEST(PresetFolders, CreatePresetDirectoryMacRefusesPathsWithoutAParent)
{
    for (const char* path : {"", "a", "/", "/no such top folder"})
        EXPECT_EQ(create(path), 1) << path;
    EXPECT_FALSE(files::exists("/no such top folder"));
}

TEST(PresetFolders, CreatePresetDirectoryMacRefusesImpossibleNames)
{
    const TemporaryHome home;
    EXPECT_EQ(create(home.home() + "/"), 1);
    EXPECT_EQ(create(home.home() + "/a\xFF"
                                   "b"),
              1);
    EXPECT_EQ(create(home.home() + std::string("/a\0b", 4)), 1);
    EXPECT_EQ(create(home.home() + "/" + std::string(256, 'x')), 1);
    EXPECT_TRUE(files::is_empty(home.home()));
    // The folder before the empty name is made.
    EXPECT_EQ(create(home.home() + "/a//b"), 1);
    EXPECT_TRUE(files::is_empty(home.home() + "/a"));
}

TEST(PresetFolders, CreatePresetDirectoryMacSucceedsOnTwoThreads)
{
    const TemporaryHome home;
    for (int round = 0; round < 50; ++round) {
        const auto path = home.home() + "/" + std::to_string(round) + "/a/b/c/d";
        int results[2] = {9, 9};
        std::thread other([&] { results[0] = create(path); });
        results[1] = create(path);
        other.join();
        EXPECT_THAT(results, ElementsAre(0, 0));
    }
}

TEST(PresetFolders, FindInFolderLooksForAName)
{
    const TemporaryHome home;
    std::ofstream(home.home() + "/file") << "x";
    files::create_directory(home.home() + "/folder");
    files::create_symlink("nowhere", home.home() + "/link");
    for (const char* name : {"file", "folder", "link"})
        EXPECT_EQ(findInFolder(home.home(), name), InFolder::exists) << name;
    EXPECT_EQ(findInFolder(home.home(), "other"), InFolder::missing);
    EXPECT_EQ(findInFolder(home.home(), std::string("file\0", 5)), InFolder::missing);
    EXPECT_EQ(findInFolder(home.home() + "/other", "file"), InFolder::noFolder);
    EXPECT_EQ(findInFolder(home.home() + "/file", "file"), InFolder::missing);
    EXPECT_EQ(findInFolder("", "file"), InFolder::noFolder);
}

TEST(PresetFolders, CreateOutputPathOfTheUserIsBelowHome)
{
    const TemporaryHome home;
    std::string path;
    EXPECT_EQ(VstK2xPresetCreater::createOutputPath(path, VstK2xPresetCreater::kUserFolder), 0);
    EXPECT_EQ(path, home.home() + "/Library/Audio/Presets/Tavrin Corporation/RDL3_RDL5 VST");
    EXPECT_TRUE(files::is_directory(path));
}

TEST(PresetFolders, CreateOutputPathOfTheSystemIsBelowTheRoot)
{
    if (files::exists("/Library"))
        GTEST_SKIP() << "would make folders in this machine's own library";
    std::string path;
    EXPECT_EQ(VstK2xPresetCreater::createOutputPath(path, VstK2xPresetCreater::kSystemFolder), 1);
    EXPECT_EQ(path, "/Library/Audio/Presets/Tavrin Corporation/RDL3_RDL5 VST");
    EXPECT_FALSE(files::exists("/Library"));
}

TEST(PresetFolders, CreateOutputPathFailsForAUserWithoutAHome)
{
    const TemporaryHome home;
    std::string path;
    const auto output = [&path] {
        return VstK2xPresetCreater::createOutputPath(path, VstK2xPresetCreater::kUserFolder);
    };
    TemporaryHome::unset();
    EXPECT_EQ(output(), 1);
    TemporaryHome::set("");
    EXPECT_EQ(output(), 1);
    TemporaryHome::set("relative");
    EXPECT_EQ(output(), 1);
    TemporaryHome::set(home.home() + "/missing");
    EXPECT_EQ(output(), 0);
    TemporaryHome::set(home.home() + "/missing/");
    EXPECT_EQ(output(), 0);
}

TEST(PresetFolders, CreateOutputPathTakesAHomeAsLongAsItsPathsFit)
{
    const TemporaryHome home;
    // "/Library/Audio/Presets/Tavrin Corporation/RDL3_RDL5 VST" has 55 bytes, and 55 + 968 = 1023.
    auto base = home.home();
    while (base.size() < 750)
        base += "/" + std::string(99, 'x');
    base += "/" + std::string(967 - base.size(), 'y');
    ASSERT_EQ(base.size(), 968u);
    std::string path;
    TemporaryHome::set(base + "z");
    EXPECT_EQ(VstK2xPresetCreater::createOutputPath(path, VstK2xPresetCreater::kUserFolder), 1);
    EXPECT_TRUE(files::is_empty(home.home()));
    TemporaryHome::set(base);
    EXPECT_EQ(VstK2xPresetCreater::createOutputPath(path, VstK2xPresetCreater::kUserFolder), 0);
    EXPECT_TRUE(files::is_directory(path));
}

TEST(PresetFolders, CreateOutputPathFailsForAFileInPlaceOfAParent)
{
    const TemporaryHome home;
    std::ofstream(home.home() + "/Library") << "x";
    std::string path;
    EXPECT_EQ(VstK2xPresetCreater::createOutputPath(path, VstK2xPresetCreater::kUserFolder), 1);
}
