// storeUserBank writes a preset file while library and file system fail.
#include "editorlib/VstIControllerInterface.h"
#include "tests/doubles/NonsenseText.h"
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/TemporaryHome.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg::Vst;
using doubles::BufferAnswer;
using doubles::le32;

const char kFile[] = "My_Bank.vstpreset";
const std::string kControllerState = le32(2) + le32(8) + le32(5) + le32(3) + "abc";

class StoringUserBank : public Scenario {
public:
    void setUp() override
    {
        Scenario::setUp();
        world.library.voiceData = [](int, int) { return BufferAnswer{"17:x:My/Bank", 0}; };
        world.library.categoryName = [](int) { return BufferAnswer{"Piano", 0}; };
        world.library.subCategoryName = [](int, int) { return BufferAnswer{"Acoustic", 0}; };
        world.library.userBank = [](int, int) { return std::vector<char>{'a', 'b', 'c'}; };
    }

    void act() override
    {
        world.trace.clear();
        std::filesystem::remove_all(home.home() + "/Library");
        world.step("storeUserBank", [this] {
            world.library.controller->storeUserBank(static_cast<VoiceBank::Bank>(8), 5);
        });
        files = home.files();
    }

    void expectDone() override
    {
        EXPECT_EQ(files, std::set<std::string>{kFile});
        const auto content = home.content(kFile);
        EXPECT_EQ(content.substr(0, 8), "VST3" + le32(1));
        EXPECT_EQ(content.substr(48, kControllerState.size()), kControllerState);
        EXPECT_NE(content.find("<MetaInfo>"), std::string::npos);
        EXPECT_NE(content.find("List" + le32(3)), std::string::npos);
    }

    /** There is this file or none, and none if its name, its folder or opening it failed. */
    void expectStated(const Fault& fault) override
    {
        EXPECT_TRUE(files.empty() || files == std::set<std::string>{kFile});
        const bool isUnnamed = fault.hit("getVoiceDataString") || fault.hit("ategoryName") ||
                               fault.hit("mkdir") || fault.hit("fopen");
        if (isUnnamed) {
            EXPECT_THAT(files, testing::IsEmpty());
        } else if (fault.hit("getUserBankData")) {
            EXPECT_THAT(files, testing::ElementsAre(kFile));
            EXPECT_EQ(home.content(kFile), "");
        }
    }

    void expectBelieved(const Fault& fault) override
    {
        if (fault.hit("getVoiceDataString")) {
            // Of an empty text the code is 0 and the name empty. Other nonsense has no code.
            const bool isEmpty =
                fault.is(Kind::kLibraryNonsense) || fault.is(Kind::kLibraryEmptyText);
            EXPECT_EQ(files,
                      isEmpty ? std::set<std::string>{".vstpreset"} : std::set<std::string>{});
            return;
        }
        EXPECT_EQ(files, std::set<std::string>{kFile});
        const auto content = home.content(kFile);
        if (fault.hit("getUserBankData"))
            expectBank(fault, content);
        else // an unknown category
            EXPECT_NE(content.find("id=\"MusicalCategory\" value=\"\""), std::string::npos);
    }

private:
    static void expectBank(const Fault& fault, const std::string& content)
    {
        if (fault.is(Kind::kLibraryEmptyText)) {
            EXPECT_EQ(content, "");
            return;
        }
        const auto what = fault.is(Kind::kLibraryBrokenText) ? doubles::Nonsense::kBrokenText
                                                             : doubles::Nonsense::kEndlessText;
        const auto data = doubles::nonsenseBytes(what);
        const auto state = le32(2) + le32(8) + le32(5) + le32(static_cast<int>(data.size())) + data;
        EXPECT_EQ(content.substr(48, state.size()), state);
    }

    doubles::TemporaryHome home;
    std::set<std::string> files;
};

TEST(Faults, StoreUserBank)
{
    injectFaults<StoringUserBank>("preset files");
}

} // namespace
} // namespace faults
