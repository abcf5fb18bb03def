#include "tests/doubles/Parameters.h"
#include "tests/simulator/SimulatorFixture.h"

namespace {

using namespace doubles;

class SimulatorState : public SimulatorTest {
protected:
    /** Appends an int32 in the byte order of the state. */
    static void put(std::vector<char>& bytes, int32 value)
    {
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<char>((static_cast<uint32>(value) >> shift) & 0xFF));
    }

    void setState(const std::vector<char>& bytes)
    {
        editor->setStateChunk(bytes.data(), static_cast<int32>(bytes.size()));
    }

    void makeASound()
    {
        user->turnKnob(volume1, 33);
        user->turnKnob(37057015, 127);
        const char data[] = {'a', '\0', '\xff'};
        ASSERT_EQ(0, editor->applyUserBank(9, 2, data, 3));
        ASSERT_EQ(0, editor->applyPreset(0, 1)); // changes the shown part only
    }
};

TEST_F(SimulatorState, SetStateChunkAndSetStateTextRestoreTheSoundInAnotherInstance)
{
    editor->syncPartToMidiChannel(3);
    makeASound();
    const auto bytes = editor->getStateChunk();
    const auto text = user->stateText();
    for (const bool asText : {false, true}) {
        VstIEditorConnect* other = nullptr;
        library.connect(&other);
        if (asText)
            EXPECT_EQ(0, other->setStateText(text.c_str()));
        else
            other->setStateChunk(bytes.data(), static_cast<int32>(bytes.size()));
        EXPECT_EQ(33, other->getParameterValue(volume1));
        EXPECT_EQ(127, other->getParameterValue(37057015));
        for (const uint32 id : user->parameterIds())
            EXPECT_EQ(editor->getParameterValue(id), other->getParameterValue(id)) << id;
        EXPECT_EQ((std::vector<char>{'a', '\0', '\xff'}), other->getUserBankData(9, 2));
        EXPECT_EQ(bytes, other->getStateChunk());
        other->destroy();
    }
}

TEST_F(SimulatorState, GetStateChunkBeginsWithNameVersionAndVoice)
{
    editor->applyPreset(2, 4);
    const auto bytes = editor->getStateChunk();
    std::vector<char> expected{'R', 'S', 'I', 'M'};
    put(expected, 1); // version
    put(expected, 2); // bank
    put(expected, 4); // number
    put(expected, kAutomatable);
    ASSERT_EQ(20u + kAutomatable * 8u + 4u, bytes.size());
    EXPECT_EQ(expected, std::vector<char>(bytes.begin(), bytes.begin() + 20));
}

TEST_F(SimulatorState, SetStateChunkTellsTheControllerButNotTheHost)
{
    ListeningController controller;
    Trace trace;
    user->turnKnob(volume1, 33);
    const auto bytes = editor->getStateChunk();
    user->turnKnob(volume1, 44);

    editor->setControllerInterface(&controller);
    watch(trace, {volume1});
    setState(bytes);
    tick();
    EXPECT_EQ(size_t{kAutomatable}, controller.managed.size());
    EXPECT_EQ(33, controller.managed[volume1]);
    EXPECT_EQ(0u, controller.managed.count(editFlag));
    EXPECT_TRUE(trace.texts().empty());
    stopWatching();
}

TEST_F(SimulatorState, SetStateChunkIgnoresUnknownParametersAndClampsValues)
{
    std::vector<char> bytes{'R', 'S', 'I', 'M'};
    for (const int32 word : {1, -1, -1, 3, 12345, 5, 37012000, 900, 37013000, -900, 0})
        put(bytes, word);
    setState(bytes);
    EXPECT_EQ(127, editor->getParameterValue(volume1));
    EXPECT_EQ(0, editor->getParameterValue(pan1));
}

TEST_F(SimulatorState, SetStateChunkRefusesEveryTruncation)
{
    makeASound();
    const auto bytes = editor->getStateChunk();
    user->turnKnob(volume1, 77);
    for (size_t size = 0; size < bytes.size(); ++size)
        setState({bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)});
    EXPECT_EQ(77, editor->getParameterValue(volume1));
    setState(bytes);
    EXPECT_NE(77, editor->getParameterValue(volume1));
}

TEST_F(SimulatorState, SetStateChunkRefusesOtherBytes)
{
    makeASound();
    user->turnKnob(volume1, 77);
    const auto saved = editor->getStateChunk();
    user->turnKnob(volume1, 88); // so that restoring anything of what was saved shows
    const auto before = editor->getStateChunk();

    for (const auto& [place, byte] : {std::pair{0, 'X'}, {4, '\2'}}) { // name, a later version
        auto changed = saved;
        changed[static_cast<size_t>(place)] = byte;
        setState(changed);
    }
    auto longer = saved;
    longer.push_back(0);
    setState(longer);
    for (const auto& words :
         {std::vector<int32>{1, 0, 0, INT32_MAX, 0}, {1, 0, 0, 0, 1, 8, 0, INT32_MAX, 0}}) {
        std::vector<char> hostile{'R', 'S', 'I', 'M'};
        for (const int32 word : words)
            put(hostile, word);
        setState(hostile);
    }
    editor->setStateChunk(nullptr, 100);
    editor->setStateChunk(saved.data(), -1);
    editor->setStateChunk(saved.data(), INT32_MIN);

    EXPECT_EQ(before, editor->getStateChunk());
}

TEST_F(SimulatorState, SetStateTextAcceptsATextWrittenByHand)
{
    EXPECT_EQ(0, editor->getStateFormat());
    user->chooseStateFormat(1);
    EXPECT_EQ(1, editor->getStateFormat());
    EXPECT_EQ(0,
              editor->setStateText(u"simulator 1\nparameter 37012000 12\nuserbank 8 0 00ff41\n"));
    EXPECT_EQ(12, editor->getParameterValue(volume1));
    EXPECT_EQ((std::vector<char>{'\0', '\xff', 'A'}), editor->getUserBankData(8, 0));
}

TEST_F(SimulatorState, SetStateTextRefusesOtherTexts)
{
    user->turnKnob(volume1, 77);
    EXPECT_EQ(1, editor->setStateText(nullptr));
    for (const auto* text :
         {u"", u"simulator", u"simulator 2\n", u"simulator 1\nnoise\n",
          u"simulator 1\nparameter 37012000\n", u"simulator 1\nparameter 37012000 99999999999\n",
          u"simulator 1\nparameter 37012000 1 2\n", u"simulator 1\nuserbank 8 0 0\n",
          u"simulator 1\nuserbank 8 0 zz\n", u"simulator 1\nparameter 37012000 \u0661\n"})
        EXPECT_EQ(1, editor->setStateText(text));
    EXPECT_EQ(77, editor->getParameterValue(volume1));
}

using SimulatorUserBanks = SimulatorTest;

TEST_F(SimulatorUserBanks, GetUserBankDataGivesDifferentDataForEachSlotAndNothingElsewhere)
{
    std::vector<std::vector<char>> all;
    for (int32 bank = -1; bank <= 16; ++bank)
        for (int32 number = -1; number <= 4; ++number) {
            const auto data = editor->getUserBankData(bank, number);
            const bool slot =
                (bank == 8 || bank == 9 || bank == 10 || bank == 14) && number >= 0 && number < 4;
            EXPECT_EQ(slot, !data.empty()) << bank << ", " << number;
            if (slot)
                all.push_back(data);
        }
    for (size_t left = 0; left < all.size(); ++left)
        for (size_t right = left + 1; right < all.size(); ++right)
            EXPECT_NE(all[left], all[right]);
}

TEST_F(SimulatorUserBanks, ApplyUserBankStoresTheData)
{
    const char data[] = {1, 0, 2};
    EXPECT_EQ(0, editor->applyUserBank(14, 3, data, 3));
    EXPECT_EQ((std::vector<char>{1, 0, 2}), editor->getUserBankData(14, 3));
    const auto applied = user->userBanksApplied();
    ASSERT_EQ(1u, applied.size());
    EXPECT_EQ(14, applied[0].bank);
    EXPECT_EQ(3, applied[0].number);
    EXPECT_EQ((std::vector<char>{1, 0, 2}), applied[0].data);
}

TEST_F(SimulatorUserBanks, ApplyUserBankRefusesMissingDataAndUnknownSlots)
{
    const char data[] = {1};
    const auto before = editor->getUserBankData(8, 0);
    EXPECT_EQ(1, editor->applyUserBank(8, 0, nullptr, 4));
    for (const int32 size : {0, -1})
        EXPECT_EQ(1, editor->applyUserBank(8, 0, data, size));
    for (const auto& [bank, number] : {std::pair{0, 0}, {8, 4}, {-1, -1}})
        EXPECT_EQ(1, editor->applyUserBank(bank, number, data, 1));
    EXPECT_EQ(before, editor->getUserBankData(8, 0));
}

} // namespace
