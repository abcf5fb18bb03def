// Parameters as play lists, automates and turns them.
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

} // namespace

TEST(ParameterList, HoldsWhatTheControllerTells)
{
    auto controller = owned(new SmallController);
    const ParameterList list(*controller);
    ASSERT_EQ(list.parameters().size(), 2U);
    const auto& volume = list.parameters()[0];
    EXPECT_EQ(volume.id, 100U);
    EXPECT_EQ(volume.title, "Volume 1");
    EXPECT_EQ(volume.unit, 2);
    EXPECT_EQ(volume.steps, 127);
    EXPECT_DOUBLE_EQ(volume.normalizedDefault, 0.5);
    EXPECT_TRUE(volume.canAutomate());
    EXPECT_FALSE(list.parameters()[1].canAutomate());
    ASSERT_EQ(list.units().size(), 2U);
    EXPECT_EQ(list.units()[1].id, 2);
    EXPECT_EQ(list.units()[1].name, "Part1");
    EXPECT_EQ(list.units()[1].parent, 1);
    EXPECT_EQ(list.units()[1].programList, 7);
}

TEST(ParameterList, FindsATitle)
{
    auto controller = owned(new SmallController);
    const ParameterList list(*controller);
    EXPECT_EQ(list.find("Volume 1").id, 100U);
    EXPECT_THROW(list.find("volume 1"), tools::Failure);
    EXPECT_THROW(list.find(""), tools::Failure);
    EXPECT_EQ(list.titleOf(100), "Volume 1");
    EXPECT_EQ(list.titleOf(200), "200");
    EXPECT_EQ(list.titleOf(300), "300");
}

TEST(ParameterList, PrintsATableWithARowEach)
{
    auto controller = owned(new SmallController);
    std::ostringstream stream;
    ParameterList(*controller).print(stream);
    EXPECT_THAT(stream.str(), HasSubstr("100        Volume 1                    2     automate  "
                                        "127    0.5000   0.5000\n"));
    EXPECT_THAT(stream.str(), HasSubstr("2 parameters, 1 automatable\n"));
    EXPECT_THAT(stream.str(), HasSubstr("2     Part1             1       7\n"));
    EXPECT_THAT(stream.str(), HasSubstr("2 units\n"));
}

TEST(Automation, RampsUpAndDownOverTheSong)
{
    EXPECT_DOUBLE_EQ(Automation::valueAt(0), 0);
    EXPECT_DOUBLE_EQ(Automation::valueAt(0.25), 0.5);
    EXPECT_DOUBLE_EQ(Automation::valueAt(0.5), 1);
    EXPECT_DOUBLE_EQ(Automation::valueAt(0.75), 0.5);
    EXPECT_DOUBLE_EQ(Automation::valueAt(1), 0);
    EXPECT_DOUBLE_EQ(Automation::valueAt(2), 0);
}

TEST(Automation, RemembersACurveOfAFewThousandPoints)
{
    auto controller = owned(new SmallController);
    Automation automation(*controller, 100);
    constexpr int64 length = 1000000;
    for (int64 position = 0; position < length; position += 10) {
        ParameterChanges changes;
        automation.play(position, length, changes);
    }
    EXPECT_EQ(automation.points(), 100000);
    ASSERT_EQ(automation.curve().size(), 2000U); // one each 500 samples
    EXPECT_EQ(automation.curve()[500].sample, 250000);
    EXPECT_DOUBLE_EQ(automation.curve()[500].value, 0.5);
}

TEST(Automation, TellsProcessorAndControllerTheSame)
{
    auto controller = owned(new SmallController);
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

TEST(EditSummary, CountsGesturesInOrder)
{
    auto handler = owned(new ComponentHandler);
    for (int i = 0; i < 2; ++i) {
        handler->beginEdit(5);
        handler->beginEdit(6); // another parameter's, in between
        handler->performEdit(5, 0.5);
        handler->endEdit(5);
    }
    const auto summary = summarizeEdits(handler->edits(), 5);
    EXPECT_EQ(summary.begins, 2);
    EXPECT_EQ(summary.performs, 2);
    EXPECT_EQ(summary.ends, 2);
    EXPECT_TRUE(summary.inOrder);
    EXPECT_FALSE(summarizeEdits(handler->edits(), 6).inOrder); // never ended
}

TEST(EditSummary, SeesEveryDisorder)
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
