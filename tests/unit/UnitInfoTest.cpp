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

/** An output that must not be changed: filled with a pattern, and compared at the end. */
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

TEST_F(UnitInfoTest, GetUnitInfoListsSeventeenUnits)
{
    EXPECT_EQ(units().getUnitCount(), 17);
    expectUnit(0, u"Common", 1);
    expectUnit(1, u"Part1 / Voice", 2);
    for (int32 part = 2; part <= kParts; ++part) {
        const auto digits = std::to_string(part);
        expectUnit(part, u"Part" + std::u16string(digits.begin(), digits.end()), part + 1);
    }
}

TEST_F(UnitInfoTest, GetUnitInfoDescribesAnyIndexAllTheSame)
{
    expectUnit(17, u"Part17", 18);
    expectUnit(-1, u"Part-1", 0);
    expectUnit(-2, u"Part-2", -1);
    expectUnit(std::numeric_limits<int32>::max(), u"Part2147483647",
               std::numeric_limits<int32>::min());
    expectUnit(std::numeric_limits<int32>::min(), u"Part-2147483648", -2147483647);
}

TEST_F(UnitInfoTest, ProgramListOperationsLeaveTheirOutputsAlone)
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

TEST_F(UnitInfoTest, SelectUnitSelectsNothingAndGetUnitByBusKnowsNone)
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

TEST_F(UnitInfoTest, StoreUserBankDoesNothingWithoutALibrary)
{
    EXPECT_NO_THROW(controller->storeUserBank(VoiceBank::kUser1, 0));
}

TEST(UnitInfoOfABoundController, GetUnitInfoNamesTheUnitOfEveryPartsParameters)
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
