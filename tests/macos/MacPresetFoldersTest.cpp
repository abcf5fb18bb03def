#include "tests/doubles/TemporaryHome.h"
#include "tests/macos/fakes/FakeCoreFoundation.h"
#include "tests/macos/fakes/FakeFileManager.h"
#include "tests/macos/MacFolderCalls.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <memory>

using namespace doubles;
namespace files = std::filesystem;

namespace {

class MacPresetFoldersTest : public testing::Test {
protected:
    MacPresetFoldersTest()
    {
        FakeCoreFoundation::reset();
        FakeFileManager::reset();
    }
    ~MacPresetFoldersTest() override
    {
        // Every CFString that was made of a path is released.
        EXPECT_EQ(FakeCoreFoundation::liveObjects(), 0u);
        EXPECT_EQ(FakeCoreFoundation::misuses(), 0u);
    }
    std::string at(const std::string& rest) const { return home.home() + rest; }

    const TemporaryHome home;
};

TEST_F(MacPresetFoldersTest, CreateFolderMakesMissingLevels)
{
    EXPECT_EQ(createMacFolder(at("/a/b/c")), 0);
    EXPECT_TRUE(files::is_directory(at("/a/b/c")));
    EXPECT_EQ(FakeFileManager::created, 3u);
    std::ofstream(at("/a/b/c/file")) << "x";
    EXPECT_EQ(createMacFolder(at("/a/b/c")), 0);
    EXPECT_EQ(FakeFileManager::created, 3u);
    EXPECT_TRUE(files::exists(at("/a/b/c/file")));
}

TEST_F(MacPresetFoldersTest, CreateFolderGivesTheFoldersReference)
{
    bool found = false;
    EXPECT_EQ(createMacFolder(at("/new/er"), &found), 0);
    EXPECT_TRUE(found);
    EXPECT_TRUE(files::is_directory(at("/new/er/probe")));
    files::create_directory(at("/old"));
    EXPECT_EQ(createMacFolder(at("/old"), &found), 0);
    EXPECT_TRUE(files::is_directory(at("/old/probe")));
    EXPECT_EQ(createMacFolder("/no such top folder", &found), 1);
    EXPECT_FALSE(found);
}

TEST_F(MacPresetFoldersTest, CreateFolderAcceptsAFileOnlyAsTheLastLevel)
{
    std::ofstream(at("/file")) << "x";
    EXPECT_EQ(createMacFolder(at("/file/a")), 1);
    EXPECT_EQ(createMacFolder(at("/file/a/b")), 1);
    EXPECT_EQ(createMacFolder(at("/file")), 0);
    EXPECT_TRUE(files::is_regular_file(at("/file")));
    EXPECT_EQ(FakeFileManager::created, 0u);
}

/** Most users may not write to /Library and /Library/Audio. */
TEST_F(MacPresetFoldersTest, CreateFolderNeedsWriteAccessOnlyWhereItMakesAFolder)
{
    files::create_directories(at("/locked/a"));
    files::permissions(at("/locked"), files::perms::owner_read | files::perms::owner_exec);
    EXPECT_EQ(createMacFolder(at("/locked/b")), 1);
    EXPECT_EQ(createMacFolder(at("/locked/b/c")), 1);
    EXPECT_EQ(FakeFileManager::created, 0u);
    EXPECT_EQ(createMacFolder(at("/locked/a")), 0);
    EXPECT_EQ(createMacFolder(at("/locked/a/b")), 0);
    EXPECT_TRUE(files::is_directory(at("/locked/a/b")));
    files::permissions(at("/locked"), files::perms::owner_all);
}

TEST_F(MacPresetFoldersTest, CreateFolderTakesUtf8)
{
    // a umlaut, hiragana a, and a character beyond the sixteen bits of a unit
    const std::string path = at("/\xC3\xA4 \xE3\x81\x82/\xF0\x9D\x84\x9E");
    EXPECT_EQ(createMacFolder(path), 0);
    EXPECT_TRUE(files::is_directory(path));
    EXPECT_EQ(findInMacFolder(at("/\xC3\xA4 \xE3\x81\x82"), "\xF0\x9D\x84\x9E"),
              MacFolderAnswer::exists);
}

/** Capital and small letters, composed and decomposed characters are one name, as on the volumes
    that Macs come with. */
std::string keyOnAMacsVolume(const std::string& name)
{
    using Text = std::unique_ptr<char, decltype(&g_free)>;
    const Text folded(g_utf8_casefold(name.c_str(), -1), &g_free);
    const Text decomposed(g_utf8_normalize(folded.get(), -1, G_NORMALIZE_NFD), &g_free);
    return decomposed.get();
}

TEST_F(MacPresetFoldersTest, CreateFolderAndFindInFolderTellNamesApartAsTheVolumeDoes)
{
    const std::string composed = "\xC3\xA4"; // a umlaut
    const std::string decomposed = "a\xCC\x88";
    files::create_directory(at("/Presets"));
    files::create_directory(at("/" + decomposed));
    EXPECT_EQ(findInMacFolder(home.home(), "presets"), MacFolderAnswer::missing);
    EXPECT_EQ(findInMacFolder(home.home(), composed), MacFolderAnswer::missing);
    FakeFileManager::keyOf = keyOnAMacsVolume;
    EXPECT_EQ(findInMacFolder(home.home(), "presets"), MacFolderAnswer::exists);
    EXPECT_EQ(findInMacFolder(at("/PRESETS"), "other"), MacFolderAnswer::missing);
    EXPECT_EQ(findInMacFolder(home.home(), composed), MacFolderAnswer::exists);
    EXPECT_EQ(createMacFolder(at("/PRESETS/" + composed)), 0);
    EXPECT_EQ(createMacFolder(at("/" + composed + "/b")), 0);
    EXPECT_EQ(FakeFileManager::created, 2u);
    EXPECT_TRUE(files::is_directory(at("/Presets/" + composed)));
    EXPECT_TRUE(files::is_directory(at("/" + decomposed + "/b")));
}

/** The File Manager allows no colon in a name; a colon in a path is a slash there. The plug-in's
    own file names have neither, since it replaces both. */
TEST_F(MacPresetFoldersTest, CreateFolderAcceptsAColonOnlyInAFolderThatExists)
{
    EXPECT_EQ(createMacFolder(at("/a:b")), 1);
    EXPECT_TRUE(files::is_empty(home.home()));
    files::create_directory(at("/a:b"));
    EXPECT_EQ(createMacFolder(at("/a:b/c")), 0);
    EXPECT_TRUE(files::is_directory(at("/a:b/c")));
    EXPECT_EQ(findInMacFolder(at("/a:b"), "c"), MacFolderAnswer::exists);
}

TEST_F(MacPresetFoldersTest, CreateFolderFailsForInvalidNames)
{
    for (const auto& path : {std::string(), std::string("a"), std::string("/"),
                             std::string("/no such top folder"), at("/\xFF"), at("/")})
        EXPECT_EQ(createMacFolder(path), 1) << path;
    EXPECT_EQ(createMacFolder(at(std::string("/a\0b", 4))), 1);
    EXPECT_EQ(createMacFolder(at("/" + std::string(256, 'x'))), 1);
    EXPECT_TRUE(files::is_empty(home.home()));
    // The level before the empty name is made before the empty name fails.
    EXPECT_EQ(createMacFolder(at("/a//b")), 1);
    EXPECT_EQ(FakeFileManager::created, 1u);
    // The folder "a" is not the folder "a" + zero + "b".
    EXPECT_EQ(createMacFolder(at(std::string("/a\0b/c", 6))), 1);
    EXPECT_EQ(FakeFileManager::created, 1u);
}

TEST_F(MacPresetFoldersTest, CreateFolderAndFindInFolderTakePathsBelow1024Bytes)
{
    std::string longest = home.home();
    while (longest.size() + 100 < 1023)
        longest += "/" + std::string(99, 'x');
    longest += "/" + std::string(1022 - longest.size(), 'y');
    ASSERT_EQ(longest.size(), 1023u);
    EXPECT_EQ(createMacFolder(longest + "z"), 1);
    EXPECT_EQ(FakeFileManager::created, 0u);
    EXPECT_EQ(createMacFolder(longest), 0);
    EXPECT_TRUE(files::is_directory(longest));

    // A longer path is not searched either, though the system may have it.
    const std::string parent = longest.substr(0, longest.rfind('/'));
    const std::string tooLong = parent + "/" + std::string(1023 - parent.size(), 'z');
    ASSERT_EQ(tooLong.size(), 1024u);
    files::create_directory(tooLong);
    for (const auto& folder : {longest, tooLong})
        std::ofstream(folder + "/file") << "x";
    EXPECT_EQ(findInMacFolder(longest, "file"), MacFolderAnswer::exists);
    EXPECT_EQ(findInMacFolder(tooLong, "file"), MacFolderAnswer::noFolder);
}

TEST_F(MacPresetFoldersTest, CreateFolderSucceedsWhereSomebodyElseMadeItFirst)
{
    FakeFileManager::beforeCreation = [this] { files::create_directory(at("/raced")); };
    bool found = false;
    EXPECT_EQ(createMacFolder(at("/raced"), &found), 0);
    EXPECT_TRUE(found);
}

TEST_F(MacPresetFoldersTest, CreateFolderFollowsLinksToParents)
{
    files::create_directory(at("/real"));
    files::create_directory_symlink(at("/real"), at("/link"));
    EXPECT_EQ(createMacFolder(at("/link/a")), 0);
    EXPECT_TRUE(files::is_directory(at("/real/a")));
}

TEST_F(MacPresetFoldersTest, FindInFolderSaysWhetherTheNameExists)
{
    std::ofstream(at("/file")) << "x";
    EXPECT_EQ(findInMacFolder(home.home(), "file"), MacFolderAnswer::exists);
    EXPECT_EQ(findInMacFolder(home.home(), "other"), MacFolderAnswer::missing);
    EXPECT_EQ(findInMacFolder(home.home(), ""), MacFolderAnswer::missing);
    EXPECT_EQ(findInMacFolder(home.home(), "\xFF"), MacFolderAnswer::missing);
    EXPECT_EQ(findInMacFolder(at("/other"), "file"), MacFolderAnswer::noFolder);
    EXPECT_EQ(findInMacFolder("", "file"), MacFolderAnswer::noFolder);
}

} // namespace
