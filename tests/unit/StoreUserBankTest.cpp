// What the controller does when the library asks it to store a user bank.
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/PresetXml.h"
#include "tests/doubles/TemporaryHome.h"
#include "tests/unit/BoundController.h"

#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class StoreUserBank : public testing::Test {
protected:
    StoreUserBank()
    {
        bound.library.voiceData = [](int32, int32) -> BufferAnswer {
            return {"80:Duo/Solo Cello"};
        };
        bound.library.categoryName = [](int32) -> BufferAnswer { return {"Strings"}; };
        bound.library.subCategoryName = [](int32, int32) -> BufferAnswer { return {"Solo"}; };
        bound.library.userBank = [](int32, int32) { return std::vector<char>{'\0', '\xFF', 'd'}; };
        bound.initialize();
    }

    /** Calls storeUserBank as the library does. */
    void store(int bank, int number)
    {
        bound.library.controller->storeUserBank(static_cast<VoiceBank::Bank>(bank), number);
    }

    TemporaryHome home;
    BoundController bound;
};

TEST_F(StoreUserBank, WritesTheBanksFileIntoTheUsersFolder)
{
    store(9, 4);
    EXPECT_THAT(home.files(), ElementsAre("Duo_Solo Cello.vstpreset"));
    const auto state = le32(2) + le32(9) + le32(4) + le32(3) +
                       std::string("\0\xFF"
                                   "d",
                                   3);
    EXPECT_EQ(home.content("Duo_Solo Cello.vstpreset"),
              presetFileBytes(state, presetXml("Strings", "Other", "Acoustic")));
}

TEST_F(StoreUserBank, AsksTheLibraryForTheNamesAndThenForTheBytes)
{
    store(9, 4);
    EXPECT_THAT(bound.trace.texts(),
                ElementsAre("library.getVoiceDataString(9, 4)", "library.getCategoryName(5)",
                            "library.getSubCategoryName(5, 0)", "library.getUserBankData(9, 4)"));
}

TEST_F(StoreUserBank, TakesTheFourUserBanksAlone)
{
    for (int bank = -1; bank <= 16; ++bank) {
        bound.trace.clear();
        store(bank, 0);
        const bool isUserBank = bank == 8 || bank == 9 || bank == 10 || bank == 14;
        EXPECT_EQ(bound.trace.texts().size(), isUserBank ? 4U : 0U) << bank;
    }
}

TEST_F(StoreUserBank, ReplacesTheFileOfItsName)
{
    store(9, 4);
    bound.library.userBank = [](int32, int32) { return std::vector<char>{'x'}; };
    store(9, 4);
    EXPECT_THAT(home.files(), ElementsAre("Duo_Solo Cello.vstpreset"));
    EXPECT_EQ(home.content("Duo_Solo Cello.vstpreset").substr(60, 5), le32(1) + "x");
}

TEST_F(StoreUserBank, RunsOnTheLibrarysThread)
{
    std::thread([this] { store(14, 0); }).join();
    EXPECT_THAT(home.files(), ElementsAre("Duo_Solo Cello.vstpreset"));
    for (const auto& call : bound.trace.all())
        EXPECT_NE(call.thread, std::this_thread::get_id()) << call.text;
}

TEST_F(StoreUserBank, SurvivesALibraryThatThrows)
{
    for (const char* call :
         {"getVoiceDataString", "getCategoryName", "getSubCategoryName", "getUserBankData"}) {
        bound.library.clearFaults();
        bound.library.throwAt(call);
        EXPECT_NO_THROW(store(9, 4)) << call;
    }
    // The file is opened before the last of these calls.
    EXPECT_EQ(home.content("Duo_Solo Cello.vstpreset"), "");
}

TEST_F(StoreUserBank, WithoutALibraryDoesNothing)
{
    bound.controller->setPluginInfo(nullptr, nullptr);
    store(9, 4);
    bound.controller->setPluginInfo(&bound.library, bound.library.handle());
    EXPECT_THAT(bound.trace.texts(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(home.home() + "/Library"));
}

} // namespace
