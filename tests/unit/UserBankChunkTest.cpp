#include "presets/VstK2xUserBank.h"

#include "basics/PlugInInfo.h"
#include "presets/VstK2xPreset.h"
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/Sanitized.h"
#include "tests/doubles/StreamDouble.h"

#include "public.sdk/source/vst/vstaudioeffect.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <set>
#include <sys/resource.h>

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::le32;
using doubles::StreamDouble;
using testing::ElementsAre;

namespace {

const std::string kData("\x00\xFF\x7F\x80\x0A", 5);
const std::string kUserBankState = le32(2) + le32(9) + le32(4) + le32(5) + kData;

struct Loaded {
    bool result = false;
    int bank = 55;
    int number = 66;
    int size = 77;
    std::vector<char> data;
};

Loaded load(IBStream* stream, std::vector<char> before = {})
{
    Loaded loaded;
    loaded.data = std::move(before);
    loaded.result = VstK2xUserBank::loadUserBank(stream, kProcessorUID, loaded.bank, loaded.number,
                                                 loaded.size, loaded.data);
    return loaded;
}

bool save(IBStream* stream, int size, const char* xml = nullptr)
{
    auto data = kData;
    return VstK2xUserBank::saveUserBank(stream, kProcessorUID, 9, 4, size, data.data(), xml, -1);
}

class LoadingController : public EditController {
public:
    tresult PLUGIN_API setState(IBStream* state) override
    {
        recognised = !VstK2xPreset::isK2xPreset(state) && VstK2xUserBank::isK2xUserBank(state);
        loaded = load(state);
        return kResultOk;
    }
    bool recognised = false;
    Loaded loaded;
};

/** Ends the process: with 0 when a size that its memory cannot hold was a failed load. */
[[noreturn]] void loadWithLittleMemory()
{
    const rlimit limit = {512U << 20, 512U << 20};
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        std::_Exit(2);
    StreamDouble stream(le32(2) + le32(8) + le32(0) + le32(kMaxInt32) + "abcd");
    const auto loaded = load(&stream, std::vector<char>(8, 'z'));
    std::_Exit(!loaded.result && stream.getReferences() == 1 ? 0 : 1);
}

} // namespace

/** The SDK's list of chunks has 128 places. */
TEST(UserBankChunk, StateWithoutAPlaceInTheListIsLeftOut)
{
    StreamDouble stream;
    VstK2xUserBank file(&stream);
    char data[] = "bank";
    for (int place = 0; place < 128; ++place)
        ASSERT_TRUE(file.storeEditControllerUserBankData(9, 4, 4, data));
    EXPECT_EQ(stream.data.size(), 128u * 20u);
    EXPECT_TRUE(file.storeEditControllerUserBankData(9, 4, 4, data));
    EXPECT_EQ(stream.data.size(), 128u * 20u);
}

TEST(UserBankChunk, FileHoldsSizeAndDataAfterTheNumber)
{
    StreamDouble stream;
    ASSERT_TRUE(save(&stream, 5, "<a>b</a>"));
    const char golden[] = "VST3\x01\0\0\0"
                          "13EEE3484D664261B90352CE35DD18B4"
                          "\x4D\0\0\0\0\0\0\0"
                          "\x02\0\0\0\x09\0\0\0\x04\0\0\0\x05\0\0\0"
                          "\0\xFF\x7F\x80\x0A"
                          "<a>b</a>"
                          "List\x03\0\0\0"
                          "Comp\x30\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                          "Cont\x30\0\0\0\0\0\0\0\x15\0\0\0\0\0\0\0"
                          "Info\x45\0\0\0\0\0\0\0\x08\0\0\0\0\0\0\0";
    EXPECT_EQ(stream.data, std::string(golden, sizeof golden - 1));
    EXPECT_EQ(stream.getReferences(), 1);
}

TEST(UserBankChunk, FileWithoutMetaInformationEndsWithTwoEntries)
{
    StreamDouble stream;
    ASSERT_TRUE(save(&stream, 5));
    EXPECT_EQ(stream.data, doubles::presetFileBytes(kUserBankState));
    EXPECT_EQ(stream.data.size(), 48u + 21u + 8u + 2u * 20u);
}

TEST(UserBankChunk, FileCarriesTheClassIDThatTheCallerGives)
{
    StreamDouble stream;
    auto data = kData;
    const FUID other(0x01234567, 0x89ABCDEF, 0xFEDCBA98, 0x76543210);
    ASSERT_TRUE(VstK2xUserBank::saveUserBank(&stream, other, 9, 4, 5, data.data(), nullptr, -1));
    EXPECT_EQ(stream.data.substr(8, 32), "0123456789ABCDEFFEDCBA9876543210");
}

TEST(UserBankChunk, WithoutDataIsNotSavedButItsFileHasBegun)
{
    for (const int size : {0, -1, kMinInt32}) {
        StreamDouble stream;
        EXPECT_FALSE(save(&stream, size, "<a>"));
        EXPECT_EQ(stream.data,
                  "VST3" + le32(1) + "13EEE3484D664261B90352CE35DD18B4" + le32(0) + le32(0));
    }
    StreamDouble stream;
    EXPECT_FALSE(
        VstK2xUserBank::saveUserBank(&stream, kProcessorUID, 9, 4, 5, nullptr, nullptr, -1));
    EXPECT_FALSE(save(nullptr, 5));
}

TEST(UserBankChunk, SaveFailsWhereHeaderMetaInformationOrListIsRefused)
{
    // As for a preset, with a fourth field and the data in the controller state: the meta
    // information's seek is call 14, its write 16, and the list's begin at 19.
    std::set<int> failing = {0, 1, 2, 3, 4, 14, 16};
    for (int call = 19; call <= 32; ++call)
        failing.insert(call);
    for (int call = 0; call <= 33; ++call) {
        StreamDouble stream;
        stream.failAtCall = static_cast<size_t>(call) + 1;
        EXPECT_EQ(save(&stream, 5, "<a>"), failing.count(call) == 0) << call;
        EXPECT_EQ(stream.getReferences(), 1) << call;
    }
    for (int call = 0; call <= 32; ++call) {
        StreamDouble stream;
        stream.throwAtCall = static_cast<size_t>(call) + 1;
        EXPECT_FALSE(save(&stream, 5, "<a>")) << call;
        EXPECT_EQ(stream.getReferences(), 1) << call;
    }
}

TEST(UserBankChunk, StateOperationsFailOnlyWithoutData)
{
    auto data = kData;
    VstK2xUserBank none(nullptr);
    EXPECT_TRUE(none.storeComponentUserBankData(1, 2, 5, data.data()));
    EXPECT_TRUE(none.storeEditControllerUserBankData(1, 2, 5, data.data()));
    EXPECT_FALSE(none.storeEditControllerUserBankData(1, 2, 0, data.data()));
    StreamDouble stream;
    {
        VstK2xUserBank file(&stream);
        EXPECT_TRUE(file.storeComponentUserBankData(1, 2, 0, nullptr));
        EXPECT_FALSE(file.storeEditControllerUserBankData(1, 2, -5, data.data()));
        EXPECT_EQ(stream.data, "");
        EXPECT_FALSE(file.contains(kControllerState));
        EXPECT_TRUE(file.storeEditControllerUserBankData(1, 2, 1, data.data()));
        EXPECT_TRUE(file.contains(kControllerState));
    }
    EXPECT_EQ(stream.getReferences(), 1);
}

TEST(UserBankChunk, MarkerTwoIsAUserBankAndNothingElseIs)
{
    const std::string content = "abc" + kUserBankState;
    for (int64 at = 0; at <= static_cast<int64>(content.size()); ++at) {
        StreamDouble stream(content);
        stream.position = at;
        EXPECT_EQ(VstK2xUserBank::isK2xUserBank(&stream), at == 3) << at;
        EXPECT_EQ(stream.position, at);
    }
    for (const int32 marker : {-1, 0, 1, 3, 258, 0x02000000}) {
        StreamDouble stream(le32(marker));
        EXPECT_FALSE(VstK2xUserBank::isK2xUserBank(&stream)) << marker;
    }
    EXPECT_FALSE(VstK2xUserBank::isK2xUserBank(nullptr));
}

TEST(UserBankChunk, LoadGivesZerosForMissingDataAtEveryLength)
{
    for (size_t size = 0; size <= kUserBankState.size(); ++size) {
        StreamDouble stream(kUserBankState.substr(0, size));
        const auto loaded = load(&stream, std::vector<char>(64, 'z'));
        EXPECT_EQ(loaded.result, size >= 16) << size;
        EXPECT_EQ(loaded.bank, size >= 8 ? 9 : -1) << size;
        EXPECT_EQ(loaded.number, size >= 12 ? 4 : -1) << size;
        EXPECT_EQ(loaded.size, size >= 16 ? 5 : 0) << size;
        if (size >= 16) {
            auto expected = kData.substr(0, size - 16);
            expected.resize(5, '\0');
            EXPECT_EQ(std::string(loaded.data.begin(), loaded.data.end()), expected) << size;
        }
        EXPECT_EQ(stream.getReferences(), 1);
    }
}

TEST(UserBankChunk, LoadLeavesWhatFollowsUnread)
{
    StreamDouble stream(kUserBankState + std::string(1000, 'y'));
    const auto loaded = load(&stream);
    EXPECT_TRUE(loaded.result);
    EXPECT_EQ(std::string(loaded.data.begin(), loaded.data.end()), kData);
    EXPECT_EQ(stream.position, 21);
}

TEST(UserBankChunk, LoadRefusesASizeBelowOne)
{
    for (const int32 size : {0, -1, kMinInt32}) {
        StreamDouble stream(le32(2) + le32(9) + le32(4) + le32(size) + kData);
        const auto loaded = load(&stream);
        EXPECT_FALSE(loaded.result) << size;
        EXPECT_THAT(loaded.data, ElementsAre()) << size;
    }
}

TEST(UserBankChunk, LoadOfAnotherMarkerFailsAndSetsBothToMinusOne)
{
    for (const int32 marker : {-1, 0, 1, 3}) {
        StreamDouble stream(le32(marker) + kUserBankState.substr(4));
        const auto loaded = load(&stream);
        EXPECT_FALSE(loaded.result);
        EXPECT_EQ(loaded.bank, -1);
        EXPECT_EQ(loaded.number, -1);
        EXPECT_EQ(loaded.size, 0);
    }
    EXPECT_FALSE(load(nullptr).result);
}

TEST(UserBankChunk, LoadHonoursALargeSizeWithFourBytesBehindIt)
{
    constexpr int32 size = 64 * 1024 * 1024;
    StreamDouble stream(le32(2) + le32(8) + le32(0) + le32(size) + "abcd");
    const auto loaded = load(&stream);
    ASSERT_TRUE(loaded.result);
    ASSERT_EQ(loaded.data.size(), static_cast<size_t>(size));
    EXPECT_EQ(std::string(loaded.data.begin(), loaded.data.begin() + 4), "abcd");
    EXPECT_TRUE(std::all_of(loaded.data.begin() + 4, loaded.data.end(),
                            [](char byte) { return byte == '\0'; }));
}

TEST(UserBankChunkDeathTest, LoadOfASizeThatMemoryCannotHoldFails)
{
#ifdef VSTK2X_SANITIZED
    GTEST_SKIP() << "a sanitizer ends the program where memory runs out";
#endif
    // In a process of its own, because the limit cannot be lifted again for the other tests.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(loadWithLittleMemory(), testing::ExitedWithCode(0), "");
}

TEST(UserBankChunk, LoadSurvivesAStreamThatFailsOrThrowsAtAnyRead)
{
    // The marker and the size are needed. A bank or number that was refused leaves the stream
    // before it, so that the number, 4, is read as the size.
    const bool expected[] = {false, true, true, false, true};
    for (int call = 0; call < 5; ++call) {
        StreamDouble failing(kUserBankState);
        failing.failAtCall = static_cast<size_t>(call) + 1;
        EXPECT_EQ(load(&failing).result, expected[call]) << call;
        StreamDouble throwing(kUserBankState);
        throwing.throwAtCall = static_cast<size_t>(call) + 1;
        EXPECT_FALSE(load(&throwing).result) << call;
        EXPECT_EQ(throwing.getReferences(), 1);
    }
}

TEST(UserBankChunk, TheSdkLoadsASavedFileIntoAController)
{
    StreamDouble stream;
    ASSERT_TRUE(save(&stream, 5, "<a>b</a>"));
    AudioEffect component;
    LoadingController controller;
    ASSERT_TRUE(PresetFile::loadPreset(&stream, kProcessorUID, &component, &controller));
    EXPECT_TRUE(controller.recognised);
    EXPECT_TRUE(controller.loaded.result);
    EXPECT_EQ(controller.loaded.bank, 9);
    EXPECT_EQ(controller.loaded.number, 4);
    EXPECT_EQ(std::string(controller.loaded.data.begin(), controller.loaded.data.end()), kData);
}
