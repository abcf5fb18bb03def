#include "presets/VstK2xPreset.h"

#include "basics/PlugInInfo.h"
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/StreamDouble.h"
#include "tests/doubles/TemporaryHome.h"

#include "pluginterfaces/base/smartpointer.h"
#include "public.sdk/source/vst/vstaudioeffect.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

#include <gmock/gmock.h>

#include <set>

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::le32;
using doubles::StreamDouble;

namespace {

const std::string kPresetState = le32(1) + le32(7) + le32(300);

struct Loaded {
    bool result;
    int bank;
    int number;
    bool operator==(const Loaded& other) const
    {
        return result == other.result && bank == other.bank && number == other.number;
    }
};

std::ostream& operator<<(std::ostream& out, const Loaded& loaded)
{
    return out << loaded.result << " " << loaded.bank << " " << loaded.number;
}

Loaded load(IBStream* stream)
{
    Loaded loaded = {false, 55, 66};
    loaded.result = VstK2xPreset::loadPreset(stream, kProcessorUID, loaded.bank, loaded.number);
    return loaded;
}

/** What a host's controller does with the state that a preset file brings. */
class LoadingController : public EditController {
public:
    tresult PLUGIN_API setState(IBStream* state) override
    {
        recognised = VstK2xPreset::isK2xPreset(state);
        loaded = load(state);
        return kResultOk;
    }
    bool recognised = false;
    Loaded loaded = {};
};

} // namespace

TEST(PresetChunk, FileWithoutMetaInformationIsHeaderEmptyComponentStateTwelveBytesAndList)
{
    StreamDouble stream;
    ASSERT_TRUE(VstK2xPreset::savePreset(&stream, kProcessorUID, 3, 127, nullptr, -1));
    const char golden[] = "VST3\x01\0\0\0"
                          "13EEE3484D664261B90352CE35DD18B4"
                          "\x3C\0\0\0\0\0\0\0"
                          "\x01\0\0\0\x03\0\0\0\x7F\0\0\0"
                          "List\x02\0\0\0"
                          "Comp\x30\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                          "Cont\x30\0\0\0\0\0\0\0\x0C\0\0\0\0\0\0\0";
    EXPECT_EQ(stream.data, std::string(golden, sizeof golden - 1));
    EXPECT_EQ(stream.data.size(), 108u);
    EXPECT_EQ(stream.getReferences(), 1);
}

TEST(PresetChunk, FileWithMetaInformationHoldsTheTextWithoutItsTerminator)
{
    StreamDouble stream;
    ASSERT_TRUE(VstK2xPreset::savePreset(&stream, kProcessorUID, 13, 258, "<a>b</a>", -1));
    const char golden[] = "VST3\x01\0\0\0"
                          "13EEE3484D664261B90352CE35DD18B4"
                          "\x44\0\0\0\0\0\0\0"
                          "\x01\0\0\0\x0D\0\0\0\x02\x01\0\0"
                          "<a>b</a>"
                          "List\x03\0\0\0"
                          "Comp\x30\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                          "Cont\x30\0\0\0\0\0\0\0\x0C\0\0\0\0\0\0\0"
                          "Info\x3C\0\0\0\0\0\0\0\x08\0\0\0\0\0\0\0";
    EXPECT_EQ(stream.data, std::string(golden, sizeof golden - 1));
}

TEST(PresetChunk, FileCarriesTheClassIDThatTheCallerGives)
{
    StreamDouble stream;
    const FUID other(0x01234567, 0x89ABCDEF, 0xFEDCBA98, 0x76543210);
    ASSERT_TRUE(VstK2xPreset::savePreset(&stream, other, 3, 127, nullptr, -1));
    EXPECT_EQ(stream.data.substr(8, 32), "0123456789ABCDEFFEDCBA9876543210");
}

TEST(PresetChunk, MetaInformationOfAGivenSizeIsCutThere)
{
    StreamDouble stream;
    ASSERT_TRUE(VstK2xPreset::savePreset(&stream, kProcessorUID, 0, 0, "<a>b</a>", 3));
    EXPECT_EQ(stream.data, doubles::presetFileBytes(le32(1) + le32(0) + le32(0), "<a>"));
}

TEST(PresetChunk, MetaInformationOfANegativeSizeIsRefused)
{
    StreamDouble stream;
    EXPECT_FALSE(VstK2xPreset::savePreset(&stream, kProcessorUID, 0, 0, "<a>", -2));
    EXPECT_FALSE(VstK2xPreset::savePreset(&stream, kProcessorUID, 0, 0, "<a>", kMinInt32));
}

TEST(PresetChunk, SaveIntoNoStreamFails)
{
    EXPECT_FALSE(VstK2xPreset::savePreset(nullptr, kProcessorUID, 0, 0, "<a>", -1));
}

TEST(PresetChunk, SaveFailsWhereHeaderMetaInformationOrListIsRefused)
{
    // Calls in order: the header's seek and four writes (0 to 4), two tells for the component
    // state, tell, three writes and tell for the controller state, seek (12), tell, write (14) and
    // tell for the meta information, tell and, from 17 on, all seeks and writes of the list.
    std::set<int> failing = {0, 1, 2, 3, 4, 12, 14};
    for (int call = 17; call <= 30; ++call)
        failing.insert(call);
    for (int call = 0; call <= 31; ++call) {
        StreamDouble stream;
        stream.failAtCall = static_cast<size_t>(call) + 1;
        EXPECT_EQ(VstK2xPreset::savePreset(&stream, kProcessorUID, 1, 2, "<a>", -1),
                  failing.count(call) == 0)
            << call;
        EXPECT_EQ(stream.getReferences(), 1) << call;
    }
}

TEST(PresetChunk, SaveFailsWhereTheStreamThrows)
{
    for (int call = 0; call <= 30; ++call) {
        StreamDouble stream;
        stream.throwAtCall = static_cast<size_t>(call) + 1;
        EXPECT_FALSE(VstK2xPreset::savePreset(&stream, kProcessorUID, 1, 2, "<a>", -1)) << call;
        EXPECT_EQ(stream.getReferences(), 1) << call;
    }
}

/** The SDK's list of chunks has 128 places. */
TEST(PresetChunk, StateWithoutAPlaceInTheListIsLeftOut)
{
    StreamDouble stream;
    VstK2xPreset file(&stream);
    for (int place = 0; place < 128; ++place)
        ASSERT_TRUE(file.storeEditControllerPresetData(7, 300));
    EXPECT_EQ(stream.data.size(), 128u * 12u);
    EXPECT_TRUE(file.storeEditControllerPresetData(7, 300));
    EXPECT_TRUE(file.storeComponentPresetData(7, 300));
    EXPECT_EQ(stream.data.size(), 128u * 12u);
}

TEST(PresetChunk, StateOperationsAreAlwaysTrue)
{
    VstK2xPreset none(nullptr);
    EXPECT_TRUE(none.storeComponentPresetData(1, 2));
    EXPECT_TRUE(none.storeEditControllerPresetData(1, 2));
    StreamDouble stream;
    {
        VstK2xPreset file(&stream);
        EXPECT_TRUE(file.storeComponentPresetData(1, 2));
        EXPECT_EQ(stream.data, "");
        EXPECT_TRUE(file.contains(kComponentState));
        for (size_t call = 1; call <= 5; ++call) {
            stream.failAtCall = stream.callCount + call;
            EXPECT_TRUE(file.storeEditControllerPresetData(1, 2));
        }
    }
    EXPECT_EQ(stream.getReferences(), 1);
}

TEST(PresetChunk, MarkerOneIsAPresetAndNothingElseIs)
{
    for (const int32 marker : {-1, 0, 2, 3, 257, 65537, 0x01000000, kMinInt32, kMaxInt32}) {
        StreamDouble stream(le32(marker) + le32(1) + le32(1));
        EXPECT_FALSE(VstK2xPreset::isK2xPreset(&stream)) << marker;
        EXPECT_EQ(stream.position, 0) << marker;
    }
    StreamDouble stream(kPresetState);
    EXPECT_TRUE(VstK2xPreset::isK2xPreset(&stream));
    EXPECT_EQ(stream.position, 0);
    EXPECT_FALSE(VstK2xPreset::isK2xPreset(nullptr));
}

TEST(PresetChunk, RecognitionLeavesTheStreamWhereItWas)
{
    const std::string content = std::string("abcde") + kPresetState;
    for (int64 at = 0; at <= static_cast<int64>(content.size()); ++at) {
        StreamDouble stream(content);
        stream.position = at;
        EXPECT_EQ(VstK2xPreset::isK2xPreset(&stream), at == 5) << at;
        EXPECT_EQ(stream.position, at);
        EXPECT_EQ(stream.getReferences(), 1);
    }
}

TEST(PresetChunk, RecognitionLeavesAFileWhereItWasAlsoAtItsEnd)
{
    // The SDK's files answer kResultFalse to a read that comes out short.
    const doubles::TemporaryHome home;
    const auto path = home.home() + "/state";
    std::ofstream(path, std::ios::binary) << kPresetState;
    const auto file = owned(FileStream::open(path.c_str(), "rb"));
    ASSERT_TRUE(file);
    for (int64 at = 0; at <= 12; ++at) {
        ASSERT_EQ(file->seek(at, IBStream::kIBSeekSet, nullptr), kResultOk);
        EXPECT_EQ(VstK2xPreset::isK2xPreset(file), at == 0) << at;
        int64 position = -1;
        EXPECT_EQ(file->tell(&position), kResultOk);
        EXPECT_EQ(position, at);
    }
}

TEST(PresetChunk, LessThanAMarkerIsNoPreset)
{
    for (size_t size = 0; size < 4; ++size) {
        StreamDouble stream(kPresetState.substr(0, size));
        EXPECT_FALSE(VstK2xPreset::isK2xPreset(&stream)) << size;
        EXPECT_EQ(stream.position, 0) << size;
    }
}

TEST(PresetChunk, RecognitionSurvivesAStreamThatFailsOrThrows)
{
    StreamDouble failing(kPresetState);
    failing.failAtCall = 1;
    EXPECT_FALSE(VstK2xPreset::isK2xPreset(&failing));
    EXPECT_EQ(failing.position, 0);
    for (int call = 0; call < 2; ++call) {
        StreamDouble throwing(kPresetState);
        throwing.throwAtCall = static_cast<size_t>(call) + 1;
        EXPECT_FALSE(VstK2xPreset::isK2xPreset(&throwing)) << call;
    }
}

TEST(PresetChunk, LoadTakesWhatIsWhollyThereAtEveryLength)
{
    for (size_t size = 0; size <= 12; ++size) {
        StreamDouble stream(kPresetState.substr(0, size));
        const Loaded expected = {size >= 4, size >= 8 ? 7 : -1, size >= 12 ? 300 : -1};
        EXPECT_EQ(load(&stream), expected) << size;
        EXPECT_EQ(stream.getReferences(), 1);
    }
}

TEST(PresetChunk, LoadLeavesWhatFollowsUnread)
{
    StreamDouble stream("xx" + kPresetState + std::string(1000, 'y'));
    stream.position = 2;
    EXPECT_EQ(load(&stream), (Loaded{true, 7, 300}));
    EXPECT_EQ(stream.position, 14);
}

TEST(PresetChunk, LoadOfAnotherMarkerFailsAndSetsBothToMinusOne)
{
    for (const int32 marker : {-1, 0, 2, 0x01000000}) {
        StreamDouble stream(le32(marker) + le32(7) + le32(300));
        EXPECT_EQ(load(&stream), (Loaded{false, -1, -1})) << marker;
    }
    EXPECT_EQ(load(nullptr), (Loaded{false, -1, -1}));
}

TEST(PresetChunk, LoadKeepsAnyBankAndNumber)
{
    for (const int32 value : {kMinInt32, -1, 0, 15, kMaxInt32}) {
        StreamDouble stream(le32(1) + le32(value) + le32(value));
        EXPECT_EQ(load(&stream), (Loaded{true, value, value}));
    }
}

TEST(PresetChunk, LoadDoesNotCompareTheClassID)
{
    StreamDouble stream(kPresetState);
    int bank = 0;
    int number = 0;
    EXPECT_TRUE(VstK2xPreset::loadPreset(&stream, kControllerUID, bank, number));
    EXPECT_EQ(bank, 7);
    EXPECT_EQ(number, 300);
}

TEST(PresetChunk, LoadSurvivesAStreamThatFailsOrThrowsAtAnyRead)
{
    const Loaded failed[] = {{false, -1, -1}, {true, -1, 7}, {true, 7, -1}};
    for (int call = 0; call < 3; ++call) {
        StreamDouble failing(kPresetState);
        failing.failAtCall = static_cast<size_t>(call) + 1;
        EXPECT_EQ(load(&failing), failed[call]) << call;
        StreamDouble throwing(kPresetState);
        throwing.throwAtCall = static_cast<size_t>(call) + 1;
        EXPECT_FALSE(load(&throwing).result) << call;
        EXPECT_EQ(throwing.getReferences(), 1);
    }
}

TEST(PresetChunk, TheSdkLoadsASavedFileIntoAController)
{
    StreamDouble stream;
    ASSERT_TRUE(VstK2xPreset::savePreset(&stream, kProcessorUID, 12, 99, "<a>b</a>", -1));
    AudioEffect component;
    LoadingController controller;
    ASSERT_TRUE(PresetFile::loadPreset(&stream, kProcessorUID, &component, &controller));
    EXPECT_TRUE(controller.recognised);
    EXPECT_EQ(controller.loaded, (Loaded{true, 12, 99}));
    EXPECT_EQ(stream.getReferences(), 1);
}
