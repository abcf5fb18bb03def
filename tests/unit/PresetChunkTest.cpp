// Preset files, of a voice and of a user bank. PresetChunk has what both do alike.
#include "basics/PlugInInfo.h"
#include "presets/VstK2xPreset.h"
#include "presets/VstK2xUserBank.h"
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/Sanitized.h"
#include "tests/doubles/StreamDouble.h"
#include "tests/doubles/TemporaryHome.h"
#include "tests/unit/LittleMemory.h"

#include "pluginterfaces/base/smartpointer.h"
#include "public.sdk/source/vst/vstaudioeffect.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

#include <gmock/gmock.h>

#include <set>

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::le32;
using doubles::presetFileBytes;
using doubles::StreamDouble;

namespace {

struct Loaded {
    bool result = false;
    int bank = 55;
    int number = 66;
    int size = 77;          ///< 0 for a preset
    std::vector<char> data; ///< empty for a preset

    std::string text() const { return {data.begin(), data.end()}; }
};

struct Fields {
    bool result;
    int bank;
    int number;
};

struct PresetKind {
    using File = VstK2xPreset;
    static constexpr int32 kMarker = 1;
    static constexpr int kBank = 7;
    static constexpr int kNumber = 300;
    static constexpr int kWrites = 3;    ///< calls of write for the controller state
    static constexpr size_t kNeeded = 4; ///< bytes that a load needs
    /** What is loaded when the read of that field fails; the next field takes its place. */
    static constexpr Fields kWhenRefused[] = {
        {false, -1, -1}, {true, -1, kBank}, {true, kBank, -1}};

    static std::string state() { return le32(kMarker) + le32(kBank) + le32(kNumber); }

    static bool save(IBStream* stream, const char* xml, int xmlSize = -1,
                     const FUID& classID = kProcessorUID)
    {
        return File::savePreset(stream, classID, kBank, kNumber, xml, xmlSize);
    }
    static bool store(File& file) { return file.storeEditControllerPresetData(kBank, kNumber); }
    static bool isOne(IBStream* stream) { return File::isK2xPreset(stream); }

    static Loaded load(IBStream* stream, const FUID& classID = kProcessorUID)
    {
        Loaded loaded;
        loaded.size = 0;
        loaded.result = File::loadPreset(stream, classID, loaded.bank, loaded.number);
        return loaded;
    }
};

const std::string kData("\x00\xFF\x7F\x80\x0A", 5);

struct UserBankKind {
    using File = VstK2xUserBank;
    static constexpr int32 kMarker = 2;
    static constexpr int kBank = 9;
    static constexpr int kNumber = 4;
    static constexpr int kWrites = 5;
    static constexpr size_t kNeeded = 16;
    /** Behind a bank or number that failed, the number 4 is read as the size. */
    static constexpr Fields kWhenRefused[] = {{false, -1, -1},
                                              {true, -1, kBank},
                                              {true, kBank, -1},
                                              {false, kBank, kNumber},
                                              {true, kBank, kNumber}};

    static std::string state()
    {
        return le32(kMarker) + le32(kBank) + le32(kNumber) + le32(5) + kData;
    }

    static bool saveBytes(IBStream* stream, int size, void* data, const char* xml, int xmlSize = -1,
                          const FUID& classID = kProcessorUID)
    {
        return File::saveUserBank(stream, classID, kBank, kNumber, size, data, xml, xmlSize);
    }
    static bool save(IBStream* stream, const char* xml, int xmlSize = -1,
                     const FUID& classID = kProcessorUID)
    {
        auto data = kData;
        return saveBytes(stream, 5, data.data(), xml, xmlSize, classID);
    }
    static bool store(File& file)
    {
        auto data = kData;
        return file.storeEditControllerUserBankData(kBank, kNumber, 5, data.data());
    }
    static bool isOne(IBStream* stream) { return File::isK2xUserBank(stream); }

    static Loaded load(IBStream* stream, const FUID& classID = kProcessorUID)
    {
        Loaded loaded;
        loaded.data.assign(64, 'z');
        loaded.result = File::loadUserBank(stream, classID, loaded.bank, loaded.number, loaded.size,
                                           loaded.data);
        return loaded;
    }
};

/** What a host's controller does with the state that a preset file brings. */
template <class Kind>
class LoadingController : public EditController {
public:
    tresult PLUGIN_API setState(IBStream* state) override
    {
        recognised = Kind::isOne(state) && PresetKind::isOne(state) != UserBankKind::isOne(state);
        loaded = Kind::load(state);
        return kResultOk;
    }
    bool recognised = false;
    Loaded loaded;
};

template <class Kind>
class PresetChunk : public testing::Test {
};

struct KindName {
    template <class Kind>
    static std::string GetName(int)
    {
        return Kind::kMarker == 1 ? "Preset" : "UserBank";
    }
};

using Kinds = testing::Types<PresetKind, UserBankKind>;
TYPED_TEST_SUITE(PresetChunk, Kinds, KindName);

TYPED_TEST(PresetChunk, SaveWritesHeaderStatesMetaInformationAndList)
{
    StreamDouble without;
    ASSERT_TRUE(TypeParam::save(&without, nullptr));
    EXPECT_EQ(without.data, presetFileBytes(TypeParam::state()));
    StreamDouble with;
    ASSERT_TRUE(TypeParam::save(&with, "<a>b</a>"));
    EXPECT_EQ(with.data, presetFileBytes(TypeParam::state(), "<a>b</a>"));
    StreamDouble cut;
    ASSERT_TRUE(TypeParam::save(&cut, "<a>b</a>", 3));
    EXPECT_EQ(cut.data, presetFileBytes(TypeParam::state(), "<a>"));
    EXPECT_EQ(cut.getReferences(), 1);
}

TYPED_TEST(PresetChunk, SaveWritesTheClassIDThatTheCallerGives)
{
    StreamDouble stream;
    const FUID other(0x01234567, 0x89ABCDEF, 0xFEDCBA98, 0x76543210);
    ASSERT_TRUE(TypeParam::save(&stream, nullptr, -1, other));
    EXPECT_EQ(stream.data.substr(8, 32), "0123456789ABCDEFFEDCBA9876543210");
}

TYPED_TEST(PresetChunk, SaveRefusesANullStreamAndMetaInformationOfANegativeSize)
{
    EXPECT_FALSE(TypeParam::save(nullptr, "<a>"));
    StreamDouble stream;
    EXPECT_FALSE(TypeParam::save(&stream, "<a>", -2));
    EXPECT_FALSE(TypeParam::save(&stream, "<a>", kMinInt32));
}

TYPED_TEST(PresetChunk, SaveFailsWhereHeaderMetaInformationOrListIsRefusedOrTheStreamThrows)
{
    // Calls in order: the header's seek and four writes (0 to 4), two tells for the component
    // state; tell, writes and tell for the controller state; seek, tell, write and tell for the
    // meta information; tell, and then all seeks and writes of the list.
    constexpr int kMeta = 9 + TypeParam::kWrites;
    std::set<int> failing = {0, 1, 2, 3, 4, kMeta, kMeta + 2};
    for (int call = kMeta + 5; call <= kMeta + 18; ++call)
        failing.insert(call);
    for (int call = 0; call <= kMeta + 19; ++call) {
        StreamDouble stream;
        stream.failAtCall = static_cast<size_t>(call) + 1;
        EXPECT_EQ(TypeParam::save(&stream, "<a>"), failing.count(call) == 0) << call;
        EXPECT_EQ(stream.getReferences(), 1) << call;
        StreamDouble throwing;
        throwing.throwAtCall = static_cast<size_t>(call) + 1;
        EXPECT_EQ(TypeParam::save(&throwing, "<a>"), call > kMeta + 18) << call;
        EXPECT_EQ(throwing.getReferences(), 1) << call;
    }
}

/** The SDK's list of chunks has 128 places. */
TYPED_TEST(PresetChunk, StoreLeavesOutAStateWithoutAPlaceInTheList)
{
    StreamDouble stream;
    typename TypeParam::File file(&stream);
    for (int place = 0; place < 128; ++place)
        ASSERT_TRUE(TypeParam::store(file));
    EXPECT_EQ(stream.data.size(), 128 * TypeParam::state().size());
    EXPECT_TRUE(TypeParam::store(file));
    EXPECT_EQ(stream.data.size(), 128 * TypeParam::state().size());
}

TYPED_TEST(PresetChunk, IsOneOnlyWhereItsMarkerStandsAndLeavesTheStreamThere)
{
    const std::string content = "abcde" + TypeParam::state();
    for (int64 at = 0; at <= static_cast<int64>(content.size()); ++at) {
        StreamDouble stream(content);
        stream.position = at;
        EXPECT_EQ(TypeParam::isOne(&stream), at == 5) << at;
        EXPECT_EQ(stream.position, at);
        EXPECT_EQ(stream.getReferences(), 1);
    }
    for (const int32 marker :
         {-1, 0, 3 - TypeParam::kMarker, 3, 257, 258, 65537, 0x01000000, 0x02000000, kMaxInt32}) {
        StreamDouble stream(le32(marker) + le32(1) + le32(1));
        EXPECT_FALSE(TypeParam::isOne(&stream)) << marker;
        EXPECT_EQ(stream.position, 0) << marker;
    }
    EXPECT_FALSE(TypeParam::isOne(nullptr));
}

TYPED_TEST(PresetChunk, IsOneLeavesAFileWhereItWasAlsoAtItsEnd)
{
    // The SDK's files answer kResultFalse to a read that comes out short.
    const doubles::TemporaryHome home;
    const auto path = home.home() + "/state";
    const auto state = TypeParam::state();
    std::ofstream(path, std::ios::binary) << state;
    const auto file = owned(FileStream::open(path.c_str(), "rb"));
    ASSERT_TRUE(file);
    for (int64 at = 0; at <= static_cast<int64>(state.size()); ++at) {
        ASSERT_EQ(file->seek(at, IBStream::kIBSeekSet, nullptr), kResultOk);
        EXPECT_EQ(TypeParam::isOne(file), at == 0) << at;
        int64 position = -1;
        EXPECT_EQ(file->tell(&position), kResultOk);
        EXPECT_EQ(position, at);
    }
}

TYPED_TEST(PresetChunk, IsOneIsFalseForAStreamThatFailsOrThrows)
{
    StreamDouble failing(TypeParam::state());
    failing.failAtCall = 1;
    EXPECT_FALSE(TypeParam::isOne(&failing));
    EXPECT_EQ(failing.position, 0);
    for (const size_t call : {1u, 2u}) {
        StreamDouble throwing(TypeParam::state());
        throwing.throwAtCall = call;
        EXPECT_FALSE(TypeParam::isOne(&throwing)) << call;
    }
}

TYPED_TEST(PresetChunk, LoadTakesWhatIsWhollyThereAtEveryLength)
{
    for (size_t size = 0; size <= TypeParam::state().size(); ++size) {
        StreamDouble stream(TypeParam::state().substr(0, size));
        const auto loaded = TypeParam::load(&stream);
        EXPECT_EQ(loaded.result, size >= TypeParam::kNeeded) << size;
        EXPECT_EQ(loaded.bank, size >= 8 ? TypeParam::kBank : -1) << size;
        EXPECT_EQ(loaded.number, size >= 12 ? TypeParam::kNumber : -1) << size;
        EXPECT_EQ(stream.getReferences(), 1);
    }
}

TYPED_TEST(PresetChunk, LoadBeginsAtTheStreamsPositionAndLeavesWhatFollowsUnread)
{
    StreamDouble stream("xx" + TypeParam::state() + std::string(1000, 'y'));
    stream.position = 2;
    EXPECT_TRUE(TypeParam::load(&stream).result);
    EXPECT_EQ(stream.position, 2 + static_cast<int64>(TypeParam::state().size()));
}

TYPED_TEST(PresetChunk, LoadOfAnotherMarkerFailsAndSetsBankAndNumberToMinusOne)
{
    for (const int32 marker : {-1, 0, 3 - TypeParam::kMarker, 3, 0x01000000}) {
        StreamDouble stream(le32(marker) + TypeParam::state().substr(4));
        const auto loaded = TypeParam::load(&stream);
        EXPECT_FALSE(loaded.result) << marker;
        EXPECT_EQ(loaded.bank, -1) << marker;
        EXPECT_EQ(loaded.number, -1) << marker;
        EXPECT_EQ(loaded.size, 0) << marker;
    }
    const auto none = TypeParam::load(nullptr);
    EXPECT_FALSE(none.result);
    EXPECT_EQ(none.bank, -1);
    EXPECT_EQ(none.number, -1);
}

TYPED_TEST(PresetChunk, LoadKeepsAnyBankAndNumberAndDoesNotCompareTheClassID)
{
    for (const int32 value : {kMinInt32, -1, 0, 15, kMaxInt32}) {
        StreamDouble stream(TypeParam::state().replace(4, 8, le32(value) + le32(value)));
        const auto loaded = TypeParam::load(&stream, kControllerUID);
        EXPECT_TRUE(loaded.result);
        EXPECT_EQ(loaded.bank, value);
        EXPECT_EQ(loaded.number, value);
    }
}

TYPED_TEST(PresetChunk, LoadSurvivesAStreamThatFailsOrThrowsAtAnyRead)
{
    size_t call = 0;
    for (const Fields& expected : TypeParam::kWhenRefused) {
        SCOPED_TRACE(++call);
        StreamDouble failing(TypeParam::state());
        failing.failAtCall = call;
        const auto loaded = TypeParam::load(&failing);
        EXPECT_EQ(loaded.result, expected.result);
        EXPECT_EQ(loaded.bank, expected.bank);
        EXPECT_EQ(loaded.number, expected.number);
        StreamDouble throwing(TypeParam::state());
        throwing.throwAtCall = call;
        EXPECT_FALSE(TypeParam::load(&throwing).result);
        EXPECT_EQ(throwing.getReferences(), 1);
    }
}

TYPED_TEST(PresetChunk, LoadPresetOfTheSdkBringsASavedFileIntoAController)
{
    StreamDouble stream;
    ASSERT_TRUE(TypeParam::save(&stream, "<a>b</a>"));
    AudioEffect component;
    LoadingController<TypeParam> controller;
    ASSERT_TRUE(PresetFile::loadPreset(&stream, kProcessorUID, &component, &controller));
    EXPECT_TRUE(controller.recognised);
    EXPECT_TRUE(controller.loaded.result);
    EXPECT_EQ(controller.loaded.bank, TypeParam::kBank);
    EXPECT_EQ(controller.loaded.number, TypeParam::kNumber);
    EXPECT_EQ(stream.getReferences(), 1);
}

TEST(PresetFileOfAVoice, StoreOperationsAreAlwaysTrue)
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

TEST(PresetFileOfAUserBank, SaveRefusesMissingDataAndHasBegunTheFile)
{
    auto data = kData;
    for (const int size : {0, -1, kMinInt32}) {
        StreamDouble stream;
        EXPECT_FALSE(UserBankKind::saveBytes(&stream, size, data.data(), "<a>"));
        EXPECT_EQ(stream.data,
                  "VST3" + le32(1) + "13EEE3484D664261B90352CE35DD18B4" + le32(0) + le32(0));
    }
    StreamDouble stream;
    EXPECT_FALSE(UserBankKind::saveBytes(&stream, 5, nullptr, nullptr));
}

TEST(PresetFileOfAUserBank, StoreOperationsFailOnlyWithoutData)
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

TEST(PresetFileOfAUserBank, LoadGivesZerosForMissingDataAtEveryLength)
{
    const auto state = UserBankKind::state();
    for (size_t size = 0; size <= state.size(); ++size) {
        StreamDouble stream(state.substr(0, size));
        const auto loaded = UserBankKind::load(&stream);
        EXPECT_EQ(loaded.size, size >= 16 ? 5 : 0) << size;
        if (size < 16)
            continue;
        auto expected = kData.substr(0, size - 16);
        expected.resize(5, '\0');
        EXPECT_EQ(loaded.text(), expected) << size;
    }
}

TEST(PresetFileOfAUserBank, LoadRefusesASizeBelowOne)
{
    for (const int32 size : {0, -1, kMinInt32}) {
        StreamDouble stream(UserBankKind::state().replace(12, 4, le32(size)));
        const auto loaded = UserBankKind::load(&stream);
        EXPECT_FALSE(loaded.result) << size;
        EXPECT_EQ(loaded.text(), std::string(64, 'z')) << size;
    }
}

TEST(PresetFileOfAUserBank, LoadHonoursALargeSizeWithFourBytesBehindIt)
{
    constexpr int32 size = 64 * 1024 * 1024;
    StreamDouble stream(le32(2) + le32(8) + le32(0) + le32(size) + "abcd");
    const auto loaded = UserBankKind::load(&stream);
    ASSERT_TRUE(loaded.result);
    ASSERT_EQ(loaded.data.size(), static_cast<size_t>(size));
    EXPECT_EQ(loaded.text().substr(0, 4), "abcd");
    EXPECT_TRUE(std::all_of(loaded.data.begin() + 4, loaded.data.end(),
                            [](char byte) { return byte == '\0'; }));
}

// A sanitizer ends the program where memory runs out.
#ifndef VSTK2X_SANITIZED
TEST(PresetFileOfAUserBank, LoadRefusesASizeThatMemoryCannotHold)
{
    StreamDouble stream(le32(2) + le32(8) + le32(0) + le32(kMaxInt32) + "abcd");
    const unit::LittleMemory little;
    EXPECT_FALSE(UserBankKind::load(&stream).result);
    EXPECT_EQ(stream.getReferences(), 1);
}
#endif

} // namespace
