#include "tests/doubles/Parameters.h"
#include "tests/simulator/SimulatorFixture.h"

#include <algorithm>
#include <array>

namespace {

using namespace doubles;

using SimulatorParameters = SimulatorTest;

/** The texts for the values 0, 1, 63, 64, 65 and 127. */
using SixTexts = std::array<const char*, 6>;
const SixTexts plainTexts{"0", "1", "63", "64", "65", "127"};
const SixTexts signedTexts{"-64", "-63", "-1", "+0", "+1", "+63"};
const SixTexts panTexts{"L64", "L63", "L1", "C", "R1", "R63"};
const SixTexts functionTexts{"Off",           "Arpeggio Hold", "Controller 63",
                             "Controller 64", "Controller 65", "Controller 127"};

/** A parameter of the first part. */
struct ParameterRow {
    uint32 id;
    int32 stepCount;
    const SixTexts& texts;
};
const ParameterRow parameterRows[] = {
    {37012000, 0, plainTexts},      // volume
    {37013000, 0, panTexts},        // pan
    {37053000, 0, signedTexts},     // cutoff
    {37054000, 0, signedTexts},     // resonance
    {37044000, 0, signedTexts},     // attack
    {37045000, 0, signedTexts},     // decay
    {37046000, 0, signedTexts},     // sustain
    {37047000, 0, signedTexts},     // release
    {37016000, 0, plainTexts},      // chorus send
    {37015000, 0, plainTexts},      // reverb send
    {19001000, 127, functionTexts}, // assignable functions
    {19002000, 127, functionTexts}, //
    {37056000, 0, signedTexts},     // assignable knobs
    {37057000, 0, signedTexts},     //
};

TEST_F(SimulatorParameters, GetParameterValueStringGivesEachParametersTextsInItsRange)
{
    for (const ParameterRow& row : parameterRows)
        for (const uint32 id : {row.id, row.id + 15}) {
            SCOPED_TRACE(id);
            EXPECT_EQ(0, editor->getParameterMin(id));
            EXPECT_EQ(127, editor->getParameterMax(id));
            EXPECT_EQ(row.stepCount, editor->getParameterStepCount(id));
            SixTexts::const_iterator expected = row.texts.begin();
            for (const int32 value : {0, 1, 63, 64, 65, 127}) {
                std::string text = "left over";
                EXPECT_EQ(0, editor->getParameterValueString(id, value, text));
                EXPECT_EQ(*expected++, text);
            }
            for (const int32 value : {-1, 128, INT32_MIN, INT32_MAX}) {
                std::string text = "left over";
                EXPECT_EQ(1, editor->getParameterValueString(id, value, text));
                EXPECT_EQ("", text);
            }
        }
}

TEST_F(SimulatorParameters, ParameterIdsGivesAllInAscendingOrder)
{
    const auto ids = user->parameterIds();
    EXPECT_EQ(size_t{kParameters}, ids.size());
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
    EXPECT_EQ(ids.end(), std::adjacent_find(ids.begin(), ids.end()));
    EXPECT_EQ(19001000u, ids.front());
    EXPECT_EQ(editFlag, ids.back());
}

TEST_F(SimulatorParameters, GetParameterValueStartsWithAPlayableSoundThatIsNotEdited)
{
    EXPECT_EQ(0, editor->getParameterMin(editFlag));
    EXPECT_EQ(1, editor->getParameterMax(editFlag));
    EXPECT_EQ(1, editor->getParameterStepCount(editFlag));
    EXPECT_EQ(0, editor->getParameterValue(editFlag));
    for (uint32 part = 0; part < 16; ++part) {
        EXPECT_EQ(100, editor->getParameterValue(volume1 + part));
        EXPECT_EQ(64, editor->getParameterValue(pan1 + part));
        EXPECT_EQ(64, editor->getParameterValue(37053000 + part));
        EXPECT_EQ(0, editor->getParameterValue(37016000 + part));
        EXPECT_EQ(0, editor->getParameterValue(19001000 + part));
    }
}

TEST_F(SimulatorParameters, GetParameterValueStringGivesNothingForAnUnknownParameter)
{
    // No part 17, no other number, no other block, and the extremes.
    for (const uint32 id : {37012016u, 37014000u, 36012000u, 201005001u, 0u, 0xFFFFFFFFu}) {
        EXPECT_EQ(0, editor->getParameterMin(id));
        EXPECT_EQ(0, editor->getParameterMax(id));
        EXPECT_EQ(0, editor->getParameterValue(id));
        EXPECT_EQ(0, editor->getParameterStepCount(id));
        std::string text = "left over";
        EXPECT_EQ(1, editor->getParameterValueString(id, 0, text));
        EXPECT_EQ("", text);
    }
}

TEST_F(SimulatorParameters, FindParameterFindsThemInAGridOfPartsAndColumns)
{
    uint32 id = 0;
    EXPECT_EQ(0, editor->findParameter(0, 0, id));
    EXPECT_EQ(volume1, id);
    EXPECT_EQ(0, editor->findParameter(1015, 709, id));
    EXPECT_EQ(37057015u, id); // the last knob of the sixteenth part
    // 1016 / 14 is 72.57: the second column begins at 73; 710 / 16 is 44.4: the second row at 45.
    EXPECT_EQ(0, editor->findParameter(73, 45, id));
    EXPECT_EQ(37013001u, id);
    id = 7;
    for (const auto& outside : {std::pair{-1, 0}, {0, -1}, {1016, 0}, {0, 710}})
        EXPECT_EQ(1, editor->findParameter(outside.first, outside.second, id));
    EXPECT_EQ(7u, id);
}

} // namespace
