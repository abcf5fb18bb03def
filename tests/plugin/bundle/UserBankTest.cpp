// The plug-in stores a user bank of the instrument as a preset file, which a host loads.
#include "tests/plugin/PlugInFixture.h"

#include "public.sdk/source/common/memorystream.h"
#include "public.sdk/source/vst/vstpresetfile.h"
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/PresetXml.h"
#include "tests/doubles/TemporaryHome.h"
#include "tools/common/LoadedSimulator.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::le32;
using testing::IsEmpty;

/** Every byte value, and the container's own IDs and numbers. */
std::string awkwardBytes()
{
    std::string bytes;
    for (int value = 255; value >= 0; --value)
        bytes += static_cast<char>(value);
    return bytes + "VST3ListCompContInfo" + le32(1) + le32(2) + le32(-1);
}

/** The controller state of number 0 of user bank 8. */
std::string bankState(const std::string& data)
{
    return le32(2) + le32(8) + le32(0) + le32(static_cast<int32>(data.size())) + data;
}

class UserBank : public plugin::PlugInFixture {
protected:
    UserBank()
    : PlugInFixture(doubles::HostFamily::plain())
    {
    }

    /** Restores a controller state, which gives the instrument bytes for the bank. */
    void setControllerState(std::string state) const
    {
        MemoryStream stream(state.data(), static_cast<TSize>(state.size()));
        EXPECT_EQ(controller->setState(&stream), kResultOk);
    }

    void loadPreset(const std::string& path) const
    {
        const auto stream = owned(FileStream::open(path.c_str(), "rb"));
        ASSERT_TRUE(stream);
        EXPECT_TRUE(PresetFile::loadPreset(
            stream, FUID(0x13EEE348, 0x4D664261, 0xB90352CE, 0x35DD18B4), component, controller));
    }
};

TEST_F(UserBank, StoreAndLoadPresetGiveTheInstrumentTheSameBytes)
{
    const doubles::TemporaryHome home;
    const std::string file = "My Kit Shelf.vstpreset"; // the bank's name
    ASSERT_EQ(initialize(), kResultOk);
    startProcessor();
    SimulatorControl* user = tools::findSimulator();
    ASSERT_TRUE(user);

    const auto data = awkwardBytes();
    setControllerState(bankState(data));
    EXPECT_TRUE(user->storeBank(VoiceBank::kUser1, 0));
    // The default category of drums: for user banks the word "Kit" in the name is not looked at.
    EXPECT_EQ(home.content(file),
              doubles::presetFileBytes(bankState(data),
                                       doubles::presetXml("Drum&amp;Perc", "Other", "")));

    setControllerState(bankState("other bytes"));
    ASSERT_EQ(user->userBanksApplied().size(), 2U);
    loadPreset(home.presetFolder() + "/" + file);
    ASSERT_EQ(user->userBanksApplied().size(), 3U);
    const auto applied = user->userBanksApplied().back();
    EXPECT_EQ(applied.bank, 8);
    EXPECT_EQ(applied.number, 0);
    EXPECT_EQ(std::string(applied.data.begin(), applied.data.end()), data);
    EXPECT_THAT(user->presetsApplied(), IsEmpty());

    stopProcessor();
    EXPECT_EQ(controller->terminate(), kResultOk);
    releaseComponents();
    EXPECT_THAT(host.ledger(), IsEmpty());
}

} // namespace
