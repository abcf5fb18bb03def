// The built plug-in reads and writes projects and preset files byte by byte as in tests/golden/.
#include "tests/doubles/GoldenBytes.h"
#include "tests/doubles/StreamDouble.h"
#include "tests/doubles/TemporaryHome.h"
#include "tests/plugin/PlugInFixture.h"

#include "editorlib/VstIControllerInterface.h"
#include "public.sdk/source/vst/vstpresetfile.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::BufferAnswer;
using doubles::goldenBytes;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<char> kState = {0, 1, '\x7F', '\x80', '\xFF', '\n', '\r', '\x1A', 0};
const std::vector<char> kUserBank = {0, '\xFF', '\x7F', '\x80', '\n', 'A'};

class StoredBytes : public plugin::PlugInFixture {
protected:
    doubles::LoadedLibrary library{trace};
    doubles::TemporaryHome home;

    void SetUp() override
    {
        ASSERT_TRUE(library) << "this program runs under with-simulator --library";
        PlugInFixture::SetUp();
        ASSERT_EQ(initialize(), kResultOk);
        startProcessor();
        trace.clear();
    }

    void TearDown() override
    {
        stopProcessor();
        EXPECT_EQ(controller->terminate(), kResultOk);
        releaseComponents();
        EXPECT_THAT(host.ledger(), IsEmpty());
    }

    std::string savedState(const std::vector<char>& state)
    {
        library->state = state;
        doubles::StreamDouble stream;
        EXPECT_EQ(component->getState(&stream), kResultOk);
        return stream.data;
    }

    tresult setState(const std::string& name)
    {
        doubles::StreamDouble stream(goldenBytes(name));
        return component->setState(&stream);
    }

    /** Loads a preset file as a host does. */
    bool load(const std::string& name)
    {
        doubles::StreamDouble stream(goldenBytes(name));
        const FUID processor(0x13EEE348, 0x4D664261, 0xB90352CE, 0x35DD18B4);
        return PresetFile::loadPreset(&stream, processor, component, controller);
    }

    std::vector<std::string> applied() const { return trace.textsOf({"library.apply"}); }
};

TEST_F(StoredBytes, GetStateWritesTheBytesThatItAlwaysWrote)
{
    EXPECT_EQ(savedState(kState), goldenBytes("state"));
    EXPECT_EQ(savedState({}), goldenBytes("state-empty"));
}

TEST_F(StoredBytes, SetStateGivesTheLibraryTheStoredBytes)
{
    EXPECT_EQ(setState("state"), kResultOk);
    EXPECT_THAT(library->statesSet, ElementsAre(kState));
    EXPECT_EQ(setState("state-empty"), kResultFalse);
    EXPECT_EQ(setState("state-version-1"), kResultOk);
    EXPECT_EQ(library->statesSet.size(), 1u);
    library->stateFormat = 1;
    EXPECT_EQ(setState("state-text"), kResultOk);
    EXPECT_THAT(library->stateTextsSet, ElementsAre(u"Grand \u266A"));
}

TEST_F(StoredBytes, StoreUserBankWritesTheFileThatItAlwaysWrote)
{
    library->voiceData = [](int, int) { return BufferAnswer{"0:Grand Suite", 0}; };
    library->categoryName = [](int) { return BufferAnswer{"Acoustic Piano", 0}; };
    library->subCategoryName = [](int, int) { return BufferAnswer{"Acoustic", 0}; };
    library->userBank = [](int, int) { return kUserBank; };
    library->controller->storeUserBank(VoiceBank::kUser1, 5);
    EXPECT_THAT(home.files(), ElementsAre("Grand Suite.vstpreset"));
    EXPECT_EQ(home.content("Grand Suite.vstpreset"), goldenBytes("user-bank"));
}

TEST_F(StoredBytes, LoadPresetGivesTheLibraryTheStoredBytes)
{
    for (const char* name : {"voice", "voice-bare"}) {
        trace.clear();
        EXPECT_TRUE(load(name)) << name;
        EXPECT_THAT(applied(), ElementsAre("library.applyPreset(0, 3)")) << name;
    }
    for (const char* name : {"user-bank", "user-bank-cut"}) {
        trace.clear();
        EXPECT_TRUE(load(name)) << name;
        EXPECT_THAT(applied(), ElementsAre("library.applyUserBank(8, 5, 6 bytes)")) << name;
    }
    EXPECT_THAT(library->userBanksApplied,
                ElementsAre(kUserBank, std::vector<char>{0, '\xFF', '\x7F', '\x80', 0, 0}));
    trace.clear();
    for (const char* name : {"user-bank-empty", "unknown-marker"})
        EXPECT_TRUE(load(name)) << name;
    EXPECT_FALSE(load("foreign"));
    EXPECT_THAT(applied(), IsEmpty());
}

} // namespace
