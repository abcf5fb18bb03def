#include "tests/unit/BoundController.h"

#include "pluginterfaces/vst/ivstcomponent.h"

#include <cstring>
#include <limits>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::IsEmpty;

namespace {

class UnitInfoTest : public testing::Test {
protected:
    void expectUnit(int32 index, const std::u16string& name, int32 id)
    {
        UnitInfo info;
        std::memset(static_cast<void*>(&info), 0x5A, sizeof(info));
        EXPECT_EQ(units().getUnitInfo(index, info), kResultOk);
        EXPECT_EQ(std::u16string(info.name), name);
        EXPECT_EQ(info.id, id) << index;
        EXPECT_EQ(info.parentUnitId, 0) << index;
        EXPECT_EQ(info.programListId, id) << index;
    }
    IUnitInfo& units() { return *controller; }

    IPtr<VstK2xController> controller = owned(new VstK2xController);
};

/** Filled with a pattern, to be found unchanged. */
template <typename Output>
class Untouched {
public:
    Untouched() { std::memset(static_cast<void*>(&value), 0x5A, sizeof(value)); }
    ~Untouched()
    {
        Output pattern;
        std::memset(static_cast<void*>(&pattern), 0x5A, sizeof(pattern));
        EXPECT_EQ(std::memcmp(&value, &pattern, sizeof(value)), 0);
    }
    Output value;
};

TEST_F(UnitInfoTest, ListsSeventeenUnits)
{
    EXPECT_EQ(units().getUnitCount(), 17);
    expectUnit(0, u"Common", 1);
    expectUnit(1, u"Part1 / Voice", 2);
    expectUnit(2, u"Part2", 3);
    expectUnit(3, u"Part3", 4);
    expectUnit(4, u"Part4", 5);
    expectUnit(5, u"Part5", 6);
    expectUnit(6, u"Part6", 7);
    expectUnit(7, u"Part7", 8);
    expectUnit(8, u"Part8", 9);
    expectUnit(9, u"Part9", 10);
    expectUnit(10, u"Part10", 11);
    expectUnit(11, u"Part11", 12);
    expectUnit(12, u"Part12", 13);
    expectUnit(13, u"Part13", 14);
    expectUnit(14, u"Part14", 15);
    expectUnit(15, u"Part15", 16);
    expectUnit(16, u"Part16", 17);
}

TEST_F(UnitInfoTest, DescribesAnyIndexAllTheSame)
{
    expectUnit(17, u"Part17", 18);
    expectUnit(-1, u"Part-1", 0);
    expectUnit(-2, u"Part-2", -1);
    expectUnit(std::numeric_limits<int32>::max(), u"Part2147483647",
               std::numeric_limits<int32>::min());
    expectUnit(std::numeric_limits<int32>::min(), u"Part-2147483648", -2147483647);
}

TEST_F(UnitInfoTest, HasNoProgramListsAndLeavesTheirOutputsAlone)
{
    EXPECT_EQ(units().getProgramListCount(), 0);
    for (const int32 index : {0, 1, 17, -1, std::numeric_limits<int32>::max()}) {
        Untouched<ProgramListInfo> list;
        Untouched<String128> name;
        Untouched<String128> attribute;
        Untouched<String128> pitch;
        EXPECT_EQ(units().getProgramListInfo(index, list.value), kResultOk);
        EXPECT_EQ(units().getProgramName(index, index, name.value), kResultOk);
        EXPECT_EQ(units().getProgramInfo(index, index, "MusicalCategory", attribute.value),
                  kResultOk);
        EXPECT_EQ(units().getProgramInfo(index, index, nullptr, attribute.value), kResultOk);
        EXPECT_EQ(units().hasProgramPitchNames(index, index), kResultOk);
        EXPECT_EQ(units().getProgramPitchName(index, index, 60, pitch.value), kResultOk);
    }
}

TEST_F(UnitInfoTest, SelectsNothingAndKnowsNoBus)
{
    EXPECT_EQ(units().getSelectedUnit(), 0);
    for (const UnitID unit : {0, 1, 17, 99, -1}) {
        EXPECT_EQ(units().selectUnit(unit), kResultOk);
        EXPECT_EQ(units().getSelectedUnit(), 0);
    }
    Untouched<UnitID> unit;
    EXPECT_EQ(units().getUnitByBus(kEvent, kInput, 0, 0, unit.value), kResultOk);
    EXPECT_EQ(units().getUnitByBus(-1, 99, -1, 99, unit.value), kResultOk);
    EXPECT_EQ(units().setUnitProgramData(1, 0, nullptr), kResultOk);
}

TEST_F(UnitInfoTest, StoresNoUserBankWithoutALibrary)
{
    EXPECT_NO_THROW(controller->storeUserBank(VoiceBank::kUser1, 0));
}

TEST(UnitInfoOfABoundController, CallsNeitherLibraryNorHost)
{
    BoundController bound;
    bound.initialize();
    IUnitInfo& units = *bound.controller;
    UnitInfo info = {};
    ProgramListInfo list = {};
    String128 text = {};
    UnitID unit = 0;
    units.getUnitCount();
    units.getUnitInfo(3, info);
    units.getProgramListCount();
    units.getProgramListInfo(0, list);
    units.getProgramName(1, 0, text);
    units.getProgramInfo(1, 0, "", text);
    units.hasProgramPitchNames(1, 0);
    units.getProgramPitchName(1, 0, 60, text);
    units.getSelectedUnit();
    units.selectUnit(1);
    units.getUnitByBus(kAudio, kOutput, 0, 0, unit);
    units.setUnitProgramData(1, 0, nullptr);
    EXPECT_THAT(bound.trace.texts(), IsEmpty());
}

TEST(UnitInfoOfABoundController, NamesTheUnitOfEveryPartsParameters)
{
    BoundController bound;
    bound.initialize();
    for (int32 index = 0; index < kAutomatable; ++index) {
        ParameterInfo parameter = {};
        ASSERT_EQ(bound.controller->getParameterInfo(index, parameter), kResultOk);
        UnitInfo unit = {};
        bound.controller->getUnitInfo(index / kParametersOfAPart + 1, unit);
        EXPECT_EQ(parameter.unitId, unit.id) << index;
    }
}

} // namespace
