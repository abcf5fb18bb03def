// A user bank stored as a preset file, with a file system that fails.
#include "editorlib/VstIControllerInterface.h"
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

    /** Never anything outside, nor under another name. */
    void expectStated(const Fault&) override
    {
        EXPECT_TRUE(files.empty() || files == std::set<std::string>{kFile});
    }

private:
    doubles::TemporaryHome home;
    std::set<std::string> files;
};

TEST(Faults, PresetFiles)
{
    injectFaults<StoringUserBank>("preset files");
}

} // namespace
} // namespace faults
