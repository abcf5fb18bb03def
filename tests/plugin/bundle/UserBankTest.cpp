// A user bank of the instrument, stored by the plug-in as a preset file and loaded again by its
// host.
#include "tests/plugin/PlugInFixture.h"

#include "public.sdk/source/common/memorystream.h"
#include "public.sdk/source/vst/vstpresetfile.h"
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/PresetXml.h"
#include "tests/doubles/TemporaryHome.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::le32;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kFileName[] = "My Kit Shelf.vstpreset"; // number 0 of bank 8
constexpr char kFirstBytes[] = {'U', 'B', 8, 0};

std::string bytesOf(const SimulatorControl::Applied& applied)
{
    return {applied.data.begin(), applied.data.end()};
}

/** Every byte value, and what could be taken for the container's own. */
std::string awkwardBytes()
{
    std::string bytes;
    for (int value = 255; value >= 0; --value)
        bytes += static_cast<char>(value);
    return bytes + "VST3ListCompContInfo" + le32(1) + le32(2) + le32(-1);
}

class UserBank : public plugin::PlugInFixture {
protected:
    UserBank()
    : PlugInFixture(doubles::HostFamily::plain())
    {
    }

    void SetUp() override
    {
        PlugInFixture::SetUp();
        ASSERT_EQ(initialize(), kResultOk);
        startProcessor();
        user = simulator();
        ASSERT_TRUE(user);
    }

    void TearDown() override
    {
        stopProcessor();
        EXPECT_EQ(controller->terminate(), kResultOk);
        releaseComponents();
        EXPECT_THAT(host.ledger(), IsEmpty());
    }

    /** Gives the instrument other bytes for the bank, as a host does that restores them. */
    void fill(const std::string& data)
    {
        auto state = le32(2) + le32(8) + le32(0) + le32(static_cast<int32>(data.size())) + data;
        MemoryStream stream(state.data(), static_cast<TSize>(state.size()));
        EXPECT_EQ(controller->setState(&stream), kResultOk);
    }

    void load(const std::string& name) const
    {
        const auto path = home.presetFolder() + "/" + name;
        const auto stream = owned(FileStream::open(path.c_str(), "rb"));
        ASSERT_TRUE(stream);
        EXPECT_TRUE(PresetFile::loadPreset(
            stream, FUID(0x13EEE348, 0x4D664261, 0xB90352CE, 0x35DD18B4), component, controller));
    }

    doubles::TemporaryHome home;
    SimulatorControl* user = nullptr;
};

// The drums' default record: in user banks the "Kit" of the name chooses no other.
std::string kitShelf(const std::string& data)
{
    return doubles::presetFileBytes(le32(2) + le32(8) + le32(0) +
                                        le32(static_cast<int32>(data.size())) + data,
                                    doubles::presetXml("Drum&amp;Perc", "Other", ""));
}

TEST_F(UserBank, IsStoredAsAFileWithTheInstrumentsBytes)
{
    EXPECT_TRUE(user->storeBank(VoiceBank::kUser1, 0));
    EXPECT_THAT(home.files(), ElementsAre(kFileName));
    auto data = std::string(kFirstBytes, sizeof(kFirstBytes));
    for (int index = 0; index < 512; ++index)
        data += static_cast<char>((index * 7 + 8 * 16) % 256);
    EXPECT_EQ(home.content(kFileName), kitShelf(data));
}

TEST_F(UserBank, ComesBackToTheInstrumentByteForByte)
{
    const auto data = awkwardBytes();
    fill(data);
    EXPECT_TRUE(user->storeBank(VoiceBank::kUser1, 0));
    EXPECT_EQ(home.content(kFileName), kitShelf(data));

    fill("other bytes");
    ASSERT_EQ(user->userBanksApplied().size(), 2U);
    load(kFileName);
    ASSERT_EQ(user->userBanksApplied().size(), 3U);
    const auto applied = user->userBanksApplied().back();
    EXPECT_EQ(applied.bank, 8);
    EXPECT_EQ(applied.number, 0);
    EXPECT_EQ(bytesOf(applied), data);
    EXPECT_THAT(user->presetsApplied(), IsEmpty());
}

TEST_F(UserBank, IsStoredOverTheFileOfItsName)
{
    fill(awkwardBytes());
    user->storeBank(VoiceBank::kUser1, 0);
    fill("short");
    user->storeBank(VoiceBank::kUser1, 0);
    EXPECT_THAT(home.files(), ElementsAre(kFileName));
    EXPECT_EQ(home.content(kFileName), kitShelf("short"));
}

TEST_F(UserBank, WritesNothingForABankOfSingleVoices)
{
    for (const int bank : {0, 7, 11, 12, 13, 15, -1})
        user->storeBank(static_cast<VoiceBank::Bank>(bank), 0);
    EXPECT_THAT(home.files(), IsEmpty());
}

} // namespace
