#include "editorlib/TavrinSynthCategory.h"
#include "tests/doubles/Parameters.h"
#include "tests/simulator/SimulatorFixture.h"

#include <cstring>
#include <set>
#include <tuple>

namespace {

using namespace doubles;

class SimulatorVoices : public SimulatorTest {
protected:
    struct Data {
        int32 bank;
        int32 number;
        std::string text;
        bool terminated;
    };

    static std::string textIn(const std::array<char, 32>& buffer)
    {
        return {buffer.data(), strnlen(buffer.data(), 30)};
    }

    /** All voices of the library. */
    std::vector<Data> all()
    {
        std::vector<Data> result;
        for (int32 bank = 0; bank < 15; ++bank)
            for (int32 number = 0;; ++number) {
                auto buffer = filled();
                if (editor->getVoiceDataString(bank, number, buffer.data()) != 0)
                    break;
                EXPECT_EQ('#', buffer[30]);
                result.push_back({bank, number, textIn(buffer), strnlen(buffer.data(), 30) < 30});
            }
        return result;
    }

    /** A buffer of 30 bytes with two more to see whether they stay. */
    static std::array<char, 32> filled()
    {
        std::array<char, 32> buffer{};
        buffer.fill('#');
        return buffer;
    }
};

TEST_F(SimulatorVoices, GetVoiceDataStringGivesCodePlaceAndName)
{
    auto buffer = filled();
    ASSERT_EQ(0, editor->getVoiceDataString(0, 0, buffer.data()));
    EXPECT_EQ("0:A01:Moonlit Grand", textIn(buffer)); // Acoustic Piano / Acoustic
    ASSERT_EQ(0, editor->getVoiceDataString(2, 7, buffer.data()));
    EXPECT_EQ("82:C08:Northern Harp", textIn(buffer)); // 5 * 16 + 2, Strings / Pizzicato
    ASSERT_EQ(0, editor->getVoiceDataString(11, 0, buffer.data()));
    EXPECT_EQ("256:Robot Choirmaster", textIn(buffer)); // 16 * 16; this bank has no place
}

TEST_F(SimulatorVoices, GetVoiceDataStringFillsTheBufferWithoutATerminator)
{
    size_t unterminated = 0;
    for (const auto& data : all())
        unterminated += data.terminated ? 0 : 1;
    EXPECT_EQ(4u, unterminated);
    auto buffer = filled();
    ASSERT_EQ(0, editor->getVoiceDataString(13, 1, buffer.data()));
    EXPECT_EQ("80:N02:Violins for Thirty Days", std::string(buffer.data(), 30));
    EXPECT_EQ('#', buffer[30]);
    ASSERT_EQ(0, editor->getVoiceDataString(13, 0, buffer.data()));
    EXPECT_EQ("0:N01:Twenty-Three Chars Long", textIn(buffer)); // 29 and the terminator
    EXPECT_EQ('\0', buffer[29]);
}

TEST_F(SimulatorVoices, GetSubCategoryNameKnowsTheCategoriesOfAllVoices)
{
    std::set<int32> banks;
    std::set<int32> codes;
    for (const auto& data : all()) {
        banks.insert(data.bank);
        const int32 code = std::stoi(data.text);
        codes.insert(code);
        auto buffer = filled();
        EXPECT_EQ(0, editor->getCategoryName(code / 16, buffer.data())) << data.text;
        EXPECT_EQ(0, editor->getSubCategoryName(code / 16, code % 16, buffer.data())) << data.text;
    }
    EXPECT_EQ(15u, banks.size());
    // Fourteen main categories of six names, two of five, and the two that have one.
    size_t named = 0;
    for (int32 code = 0; code < 18 * 16; ++code) {
        auto buffer = filled();
        if (editor->getSubCategoryName(code / 16, code % 16, buffer.data()) == 0 &&
            buffer[0] != '\0') {
            ++named;
            EXPECT_EQ(1u, codes.count(code)) << code;
        }
    }
    EXPECT_EQ(14u * 6u + 2u * 5u + 2u, named);
}

TEST_F(SimulatorVoices, GetCategoryNameAndGetSubCategoryNameKnowEveryCategory)
{
    namespace Synth = Steinberg::Vst::TavrinSynth;
    for (int32 main = 0; main < 18; ++main) {
        auto buffer = filled();
        EXPECT_EQ(0, editor->getCategoryName(main, buffer.data()));
        EXPECT_EQ(Synth::VoiceCategoryName[main], textIn(buffer));
        for (int32 sub = 0; sub < 6; ++sub) {
            buffer = filled();
            EXPECT_EQ(0, editor->getSubCategoryName(main, sub, buffer.data()));
            EXPECT_EQ(Synth::VoiceSubCategoryName[main][sub], textIn(buffer));
        }
    }
    // In words, in case the table itself is changed.
    auto buffer = filled();
    EXPECT_EQ(0, editor->getCategoryName(11, buffer.data()));
    EXPECT_EQ("Chromatic Percussion", textIn(buffer));
    for (const auto& [main, sub, name] : {std::tuple{3, 2, "Electric Distortion"},
                                          {4, 4, "No Assign"},
                                          {4, 5, ""},
                                          {12, 1, "Percussion"}}) {
        EXPECT_EQ(0, editor->getSubCategoryName(main, sub, buffer.data()));
        EXPECT_EQ(name, textIn(buffer));
    }
}

TEST_F(SimulatorVoices, GetVoiceDataStringWritesNothingForUnknownVoices)
{
    const auto untouched = filled();
    auto buffer = filled();
    for (const auto& [bank, number] : {std::pair{-1, 0},
                                       {15, 0},
                                       {0, -1},
                                       {0, 1000},
                                       {8, 4},
                                       {INT32_MAX, INT32_MAX},
                                       {INT32_MIN, INT32_MIN}})
        EXPECT_EQ(1, editor->getVoiceDataString(bank, number, buffer.data()));
    for (const int32 index : {-1, 18, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(1, editor->getCategoryName(index, buffer.data()));
        EXPECT_EQ(1, editor->getSubCategoryName(index, 0, buffer.data()));
    }
    for (const int32 index : {-1, 6, INT32_MAX, INT32_MIN})
        EXPECT_EQ(1, editor->getSubCategoryName(0, index, buffer.data()));
    EXPECT_EQ(untouched, buffer);
    EXPECT_EQ(1, editor->getVoiceDataString(0, 0, nullptr));
    EXPECT_EQ(1, editor->getCategoryName(0, nullptr));
    EXPECT_EQ(1, editor->getSubCategoryName(0, 0, nullptr));
}

TEST_F(SimulatorVoices, ApplyPresetReportsTheShownPartsParametersAsTurnedKnobs)
{
    Trace trace;
    editor->syncPartToMidiChannel(2);
    const int32 elsewhere = editor->getParameterValue(volume1);
    std::vector<uint32> part3;
    for (const uint32 id : user->parameterIds())
        if (id % 1000 == 2)
            part3.push_back(id);
    ASSERT_EQ(size_t{kParametersOfAPart}, part3.size());
    watch(trace, part3);
    EXPECT_EQ(0, editor->applyPreset(1, 2));
    tick();
    for (const std::string kind : {"begin", "value", "end"})
        EXPECT_EQ(part3.size(), trace.textsOf({kind}).size());
    EXPECT_EQ(elsewhere, editor->getParameterValue(volume1));
    EXPECT_FALSE(user->edited());
    stopWatching();
}

TEST_F(SimulatorVoices, ApplyPresetRecordsUnknownVoicesAndChangesNothing)
{
    const auto before = editor->getStateChunk();
    EXPECT_EQ(1, editor->applyPreset(99, -5));
    EXPECT_EQ(0, editor->applyPreset(8, 3));
    const auto applied = user->presetsApplied();
    ASSERT_EQ(2u, applied.size());
    EXPECT_EQ(99, applied[0].bank);
    EXPECT_EQ(-5, applied[0].number);
    EXPECT_EQ(8, applied[1].bank);
    EXPECT_NE(before, editor->getStateChunk());
}

} // namespace
