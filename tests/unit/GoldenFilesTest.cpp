// The states and preset files that users have on their disks. Every later version must load them,
// and this one writes exactly these bytes. They stand in tests/golden/, written from the format's
// definition, and never change.
#include "basics/PlugInInfo.h"
#include "presets/VstK2xPresetCreater.h"
#include "processor/VstK2x.h"
#include "tests/doubles/GoldenBytes.h"
#include "tests/doubles/StreamDouble.h"
#include "tests/doubles/TemporaryHome.h"
#include "tests/unit/BoundController.h"

#include "public.sdk/source/vst/vstpresetfile.h"

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::BufferAnswer;
using doubles::goldenBytes;
using doubles::StreamDouble;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::vector<char> kState = {0, 1, '\x7F', '\x80', '\xFF', '\n', '\r', '\x1A', 0};
const std::vector<char> kUserBank = {0, '\xFF', '\x7F', '\x80', '\n', 'A'};

/** Processor and controller, connected, and bound to a library. */
class GoldenFiles : public testing::Test {
protected:
    void SetUp() override
    {
        bound.initialize();
        ASSERT_EQ(processor->initialize(&bound.host.context), kResultOk);
        ASSERT_EQ(bound.controller->connect(processor), kResultOk);
        bound.trace.clear();
    }

    void TearDown() override
    {
        bound.controller->disconnect(processor);
        processor->terminate();
    }

    tresult setState(const std::string& name)
    {
        StreamDouble stream(goldenBytes(name));
        return processor->setState(&stream);
    }

    std::string savedState(const std::vector<char>& state)
    {
        bound.library.state = state;
        StreamDouble stream;
        EXPECT_EQ(processor->getState(&stream), kResultOk);
        return stream.data;
    }

    /** As a host loads a preset file. */
    bool load(const std::string& name)
    {
        StreamDouble stream(goldenBytes(name));
        return PresetFile::loadPreset(&stream, kProcessorUID, processor, bound.controller);
    }

    /** The bytes of the file that the generator writes for the voice "Grand Suite". */
    std::string storedFile(int bank, int number)
    {
        const doubles::TemporaryHome home;
        bound.library.voiceData = [](int, int) { return BufferAnswer{"0:Grand Suite", 0}; };
        bound.library.categoryName = [](int) { return BufferAnswer{"Acoustic Piano", 0}; };
        bound.library.subCategoryName = [](int, int) { return BufferAnswer{"Acoustic", 0}; };
        bound.library.userBank = [](int, int) { return kUserBank; };
        VstK2xPresetCreater creater(bound.library);
        creater.setVoiceDataInfo(static_cast<VoiceBank::Bank>(bank), number,
                                 static_cast<VstK2xPresetCreater::PresetType>(0x1707FF),
                                 VstK2xPresetCreater::kUserFolder);
        return home.content("Grand Suite.vstpreset");
    }

    std::vector<std::string> applied() const { return bound.trace.textsOf({"library.apply"}); }

    doubles::BoundController bound;
    IPtr<VstK2x> processor = owned(new VstK2x);
};

} // namespace

TEST_F(GoldenFiles, SetStateHandsTheLibraryTheStateByteForByte)
{
    EXPECT_EQ(setState("state"), kResultOk);
    EXPECT_THAT(bound.library.statesSet, ElementsAre(kState));
}

TEST_F(GoldenFiles, GetStateWritesTheStateAsItAlwaysWas)
{
    EXPECT_EQ(savedState(kState), goldenBytes("state"));
    EXPECT_EQ(savedState({}), goldenBytes("state-empty"));
}

TEST_F(GoldenFiles, SetStateRefusesAnEmptyStateAndLeavesALaterVersionAlone)
{
    EXPECT_EQ(setState("state-empty"), kResultFalse);
    EXPECT_EQ(setState("state-version-1"), kResultOk);
    EXPECT_THAT(bound.library.statesSet, IsEmpty());
}

TEST_F(GoldenFiles, SetStateHandsTheLibraryATextState)
{
    bound.library.stateFormat = 1;
    EXPECT_EQ(setState("state-text"), kResultOk);
    EXPECT_THAT(bound.library.stateTextsSet, ElementsAre(u"Grand \u266A"));
}

TEST_F(GoldenFiles, LoadPresetSelectsTheVoice)
{
    for (const char* name : {"voice", "voice-bare"}) {
        bound.trace.clear();
        EXPECT_TRUE(load(name)) << name;
        EXPECT_THAT(applied(), ElementsAre("library.applyPreset(0, 3)")) << name;
    }
}

TEST_F(GoldenFiles, LoadPresetHandsTheLibraryAUserBankByteForByteAndFillsACutOneWithZeros)
{
    EXPECT_TRUE(load("user-bank"));
    EXPECT_THAT(applied(), ElementsAre("library.applyUserBank(8, 5, 6 bytes)"));
    EXPECT_TRUE(load("user-bank-cut"));
    EXPECT_THAT(bound.library.userBanksApplied,
                ElementsAre(kUserBank, std::vector<char>{0, '\xFF', '\x7F', '\x80', 0, 0}));
}

TEST_F(GoldenFiles, LoadPresetLeavesAnEmptyUserBankAndUnknownKindsAlone)
{
    for (const char* name : {"user-bank-empty", "unknown-marker"}) {
        EXPECT_TRUE(load(name)) << name;
        EXPECT_THAT(applied(), IsEmpty()) << name;
    }
}

TEST_F(GoldenFiles, SetVoiceDataInfoWritesPresetFilesAsTheyAlwaysWere)
{
    EXPECT_EQ(storedFile(0, 3), goldenBytes("voice"));
    EXPECT_EQ(storedFile(8, 5), goldenBytes("user-bank"));
}

/** The file names its plug-in, and a host loads no other's. The controller state in it does not. */
TEST_F(GoldenFiles, LoadPresetLeavesAForeignFileToTheHostToRefuse)
{
    EXPECT_FALSE(load("foreign"));
    EXPECT_THAT(applied(), IsEmpty());

    StreamDouble controllerState(goldenBytes("foreign").substr(48, 12));
    EXPECT_EQ(bound.controller->setState(&controllerState), kResultOk);
    EXPECT_THAT(applied(), ElementsAre("library.applyPreset(7, 9)"));
}
