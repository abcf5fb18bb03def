#include "tests/simulator/SimulatorFixture.h"

#include <algorithm>

namespace {

using namespace doubles;

struct Row {
    const char* name;
    uint32 firstPart; ///< ID in the first part
    uint32 lastPart;  ///< ID in the sixteenth
    int32 stepCount;
    const char* at0;
    const char* at1;
    const char* at63;
    const char* at64;
    const char* at65;
    const char* at127;
};

std::ostream& operator<<(std::ostream& stream, const Row& row)
{
    return stream << row.name;
}

class SimulatorParameter : public SimulatorTest, public testing::WithParamInterface<Row> {
protected:
    std::string textOf(uint32 id, int32 value)
    {
        std::string text = "left over";
        EXPECT_EQ(0, editor->getParameterValueString(id, value, text));
        return text;
    }
};

TEST_P(SimulatorParameter, HasItsRangeStepsAndTexts)
{
    const Row& row = GetParam();
    for (const uint32 id : {row.firstPart, row.lastPart}) {
        EXPECT_EQ(0, editor->getParameterMin(id));
        EXPECT_EQ(127, editor->getParameterMax(id));
        EXPECT_EQ(row.stepCount, editor->getParameterStepCount(id));
        EXPECT_EQ(row.at0, textOf(id, 0));
        EXPECT_EQ(row.at1, textOf(id, 1));
        EXPECT_EQ(row.at63, textOf(id, 63));
        EXPECT_EQ(row.at64, textOf(id, 64));
        EXPECT_EQ(row.at65, textOf(id, 65));
        EXPECT_EQ(row.at127, textOf(id, 127));
    }
}

constexpr Row signedRow(const char* name, uint32 firstPart, uint32 lastPart)
{
    return {name, firstPart, lastPart, 0, "-64", "-63", "-1", "+0", "+1", "+63"};
}

constexpr Row plainRow(const char* name, uint32 firstPart, uint32 lastPart)
{
    return {name, firstPart, lastPart, 0, "0", "1", "63", "64", "65", "127"};
}

constexpr Row functionRow(const char* name, uint32 firstPart, uint32 lastPart)
{
    return {name,
            firstPart,
            lastPart,
            127,
            "Off",
            "Arpeggio Hold",
            "Controller 63",
            "Controller 64",
            "Controller 65",
            "Controller 127"};
}

INSTANTIATE_TEST_SUITE_P(Table, SimulatorParameter,
                         testing::Values(plainRow("Volume", 37012000, 37012015),
                                         Row{"Pan", 37013000, 37013015, 0, "L64", "L63", "L1", "C",
                                             "R1", "R63"},
                                         signedRow("Cutoff", 37053000, 37053015),
                                         signedRow("Resonance", 37054000, 37054015),
                                         signedRow("AegAttackTime", 37044000, 37044015),
                                         signedRow("AegDecayTime", 37045000, 37045015),
                                         signedRow("AegSustainLevel", 37046000, 37046015),
                                         signedRow("AegReleaseTime", 37047000, 37047015),
                                         plainRow("ChorusSend", 37016000, 37016015),
                                         plainRow("ReverbSend", 37015000, 37015015),
                                         functionRow("AssignableFunction1", 19001000, 19001015),
                                         functionRow("AssignableFunction2", 19002000, 19002015),
                                         signedRow("AssignableKnob1", 37056000, 37056015),
                                         signedRow("AssignableKnob2", 37057000, 37057015)),
                         [](const auto& row) { return std::string(row.param.name); });

using SimulatorParameters = SimulatorTest;

TEST_F(SimulatorParameters, AreTwoHundredTwentyFiveInAscendingOrder)
{
    const auto ids = user->parameterIds();
    EXPECT_EQ(225u, ids.size()); // 16 parts of 14, and the edit flag
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
    EXPECT_EQ(ids.end(), std::adjacent_find(ids.begin(), ids.end()));
    EXPECT_EQ(19001000u, ids.front());
    EXPECT_EQ(editFlag, ids.back());
}

TEST_F(SimulatorParameters, IncludeAnEditFlagOfTwoStates)
{
    EXPECT_EQ(0, editor->getParameterMin(editFlag));
    EXPECT_EQ(1, editor->getParameterMax(editFlag));
    EXPECT_EQ(1, editor->getParameterStepCount(editFlag));
    EXPECT_EQ(0, editor->getParameterValue(editFlag));
}

TEST_F(SimulatorParameters, StandAtAPlayableSound)
{
    for (uint32 part = 0; part < 16; ++part) {
        EXPECT_EQ(100, editor->getParameterValue(volume1 + part));
        EXPECT_EQ(64, editor->getParameterValue(pan1 + part));
        EXPECT_EQ(64, editor->getParameterValue(37053000 + part));
        EXPECT_EQ(0, editor->getParameterValue(37016000 + part));
        EXPECT_EQ(0, editor->getParameterValue(19001000 + part));
    }
}

TEST_F(SimulatorParameters, OutsideTheSetAnswerNothing)
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

TEST_F(SimulatorParameters, HaveNoTextOutsideTheirRange)
{
    for (const int32 value : {-1, 128, INT32_MIN, INT32_MAX})
        for (const uint32 id : {volume1, pan1, 37053000u, 19001000u}) {
            std::string text = "left over";
            EXPECT_EQ(1, editor->getParameterValueString(id, value, text));
            EXPECT_EQ("", text);
        }
}

TEST_F(SimulatorParameters, AreFoundInAGridOfPartsAndColumns)
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
