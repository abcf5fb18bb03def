// The parameters that play lists and automates, and the edits that it sums up.
#include "public.sdk/source/vst/hosting/parameterchanges.h"
#include "public.sdk/source/vst/vsteditcontroller.h"
#include "tools/common/Failure.h"
#include "tools/play/music/Automation.h"
#include "tools/play/output/EditSummary.h"
#include "tools/play/plugin/ParameterList.h"

#include <gmock/gmock.h>
#include <sstream>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;
using testing::_;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::HasSubstr;
using Kind = ComponentHandler::Kind;

namespace {

/** A controller with two units and two parameters. */
class SmallController final : public EditControllerEx1 {
public:
    SmallController()
    {
        initialize(nullptr);
        addUnit(new Unit(STR16("Common"), 1));
        addUnit(new Unit(STR16("Part1"), 2, 1, 7));
        parameters.addParameter(STR16("Volume 1"), nullptr, 127, 0.5, ParameterInfo::kCanAutomate,
                                100, 2);
        parameters.addParameter(STR16(""), nullptr, 0, 0, 0, 200, -1);
    }
    ~SmallController() override { terminate(); }
};

class ControllerTest : public testing::Test {
protected:
    IPtr<SmallController> controller = owned(new SmallController);
};
using ParameterListTest = ControllerTest;
using AutomationTest = ControllerTest;

} // namespace

TEST_F(ParameterListTest, HoldsWhatTheControllerTells)
{
    const ParameterList list(*controller);
    EXPECT_THAT(list.parameters(), ElementsAre(FieldsAre(100U, "Volume 1", 2,
                                                         ParameterInfo::kCanAutomate, 127, 0.5, _),
                                               FieldsAre(200U, "", -1, 0, 0, 0.0, _)));
    EXPECT_TRUE(list.parameters()[0].canAutomate());
    EXPECT_FALSE(list.parameters()[1].canAutomate());
    EXPECT_THAT(list.units(),
                ElementsAre(FieldsAre(1, "Common", 0, -1), FieldsAre(2, "Part1", 1, 7)));
}

TEST_F(ParameterListTest, FindAndTitleOfKnowTitlesAndIDs)
{
    const ParameterList list(*controller);
    EXPECT_EQ(list.find("Volume 1").id, 100U);
    EXPECT_THROW(list.find("volume 1"), tools::Failure);
    EXPECT_THROW(list.find(""), tools::Failure);
    EXPECT_EQ(list.titleOf(100), "Volume 1");
    EXPECT_EQ(list.titleOf(200), "200");
    EXPECT_EQ(list.titleOf(300), "300");
}

TEST_F(ParameterListTest, PrintWritesATableWithARowForEach)
{
    std::ostringstream stream;
    ParameterList(*controller).print(stream);
    EXPECT_THAT(stream.str(), HasSubstr("100        Volume 1                    2     automate  "
                                        "127    0.5000   0.5000\n"));
    EXPECT_THAT(stream.str(), HasSubstr("2 parameters, 1 automatable\n"));
    EXPECT_THAT(stream.str(), HasSubstr("2     Part1             1       7\n"));
    EXPECT_THAT(stream.str(), HasSubstr("2 units\n"));
}

TEST(Automation, ValueAtRampsUpAndDownOverTheSong)
{
    const double values[] = {0, 0.5, 1, 0.5, 0, 0}; // at each quarter, and beyond the end
    for (size_t quarter = 0; quarter < std::size(values); ++quarter)
        EXPECT_DOUBLE_EQ(Automation::valueAt(0.25 * static_cast<double>(quarter)), values[quarter]);
}

TEST_F(AutomationTest, CurveKeepsTwoThousandOfAnyNumberOfPoints)
{
    Automation automation(*controller, 100);
    constexpr int64 length = 1000000;
    for (int64 position = 0; position < length; position += 10) {
        ParameterChanges changes;
        automation.play(position, length, changes);
    }
    EXPECT_EQ(automation.points(), 100000);
    ASSERT_EQ(automation.curve().size(), 2000U); // one each 500 samples
    EXPECT_THAT(automation.curve()[500], FieldsAre(250000, 0.5));
}

TEST_F(AutomationTest, PlayTellsProcessorAndControllerTheSame)
{
    Automation automation(*controller, 100);
    ParameterChanges changes;
    automation.play(1000, 4000, changes);
    ASSERT_EQ(changes.getParameterCount(), 1);
    auto* queue = changes.getParameterData(0);
    EXPECT_EQ(queue->getParameterId(), 100U);
    ASSERT_EQ(queue->getPointCount(), 1);
    int32 offset = -1;
    ParamValue value = 0;
    queue->getPoint(0, offset, value);
    EXPECT_EQ(offset, 0);
    EXPECT_DOUBLE_EQ(value, 0.5);
    EXPECT_DOUBLE_EQ(controller->getParamNormalized(100), 0.5);
    EXPECT_EQ(automation.points(), 1);
}

TEST(EditSummary, SummarizeEditsCountsTheGesturesOfOneParameter)
{
    auto handler = owned(new ComponentHandler);
    for (int i = 0; i < 2; ++i) {
        handler->beginEdit(5);
        handler->beginEdit(6); // of another parameter, in between
        handler->performEdit(5, 0.5);
        handler->endEdit(5);
    }
    EXPECT_THAT(summarizeEdits(handler->edits(), 5), FieldsAre("", 0, 2, 2, 2, true));
    EXPECT_FALSE(summarizeEdits(handler->edits(), 6).inOrder); // never ended
}

TEST(EditSummary, SummarizeEditsSeesEveryDisorder)
{
    const auto inOrder = [](const std::vector<Kind>& kinds) {
        std::vector<ComponentHandler::Edit> edits;
        for (const auto kind : kinds)
            edits.push_back({kind, 1, 0});
        return summarizeEdits(edits, 1).inOrder;
    };
    EXPECT_TRUE(inOrder({}));
    EXPECT_TRUE(inOrder({Kind::begin, Kind::perform, Kind::perform, Kind::end}));
    EXPECT_FALSE(inOrder({Kind::begin, Kind::end}));
    EXPECT_FALSE(inOrder({Kind::perform}));
    EXPECT_FALSE(inOrder({Kind::end}));
    EXPECT_FALSE(inOrder({Kind::begin, Kind::begin, Kind::perform, Kind::end}));
    EXPECT_FALSE(inOrder({Kind::begin, Kind::perform, Kind::end, Kind::perform}));
    EXPECT_FALSE(inOrder({Kind::begin, Kind::perform}));
}
