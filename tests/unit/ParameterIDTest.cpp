#include "tests/unit/BoundController.h"

#include <limits>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;

namespace {

constexpr auto kPart = VstIObserver::ParamModePart;
constexpr auto kCommon = VstIObserver::ParamModeCommon;
constexpr auto kPartVoice = VstIObserver::ParamModePartVoice;

TEST(GetVSTParamID, IsBlockNumberAndPartInDecimal)
{
    EXPECT_EQ(VstK2xController::getVSTParamID(37, 12, 0, kPartVoice), 37012000u);
    EXPECT_EQ(VstK2xController::getVSTParamID(37, 12, 15, kPart), 37012015u);
    EXPECT_EQ(VstK2xController::getVSTParamID(201, 5, 0, kPartVoice), 201005000u);
    EXPECT_EQ(VstK2xController::getVSTParamID(0, 0, 7, kPart), 7u);
    // A common parameter has no part.
    EXPECT_EQ(VstK2xController::getVSTParamID(37, 12, 7, kCommon), 37012016u);
    EXPECT_EQ(VstK2xController::getVSTParamID(37, 12, 0, kCommon), 37012016u);
    // Fields of more than three digits make it longer.
    EXPECT_EQ(VstK2xController::getVSTParamID(37, 1234, 5, kPart), 371234005u);
    EXPECT_EQ(VstK2xController::getVSTParamID(37, 12, 1000, kPart), 370121000u);
    EXPECT_EQ(VstK2xController::getVSTParamID(3000, 1, 2, kPart), 3000001002u);
    constexpr int smallest = std::numeric_limits<int>::min();
    constexpr int largest = std::numeric_limits<int>::max();
    EXPECT_NO_THROW(VstK2xController::getVSTParamID(smallest, smallest, smallest, kPart));
    EXPECT_NO_THROW(VstK2xController::getVSTParamID(largest, largest, largest, kPart));
}

TEST(CreateObserverParameter, GivesTheIDAloneWithoutALibrary)
{
    const auto controller = owned(new VstK2xController);
    EXPECT_EQ(controller->createObserverParameter(37, 12, 7, editorValueChange, kCommon),
              37012016u);
    EXPECT_EQ(controller->getParameter(37012016), nullptr);
}

TEST(CreateObserverParameter, MakesTheObserverAndNoParameter)
{
    BoundController bound;
    bound.initialize();
    EXPECT_EQ(bound.controller->createObserverParameter(1, 2, 3, editorValueChange, kPart),
              1002003u);
    EXPECT_THAT(bound.trace.texts(),
                ElementsAre("library.getVSTObserverObject(1002003, 1, 2, 3, 0)",
                            "library.addObserver(1002003)"));
    EXPECT_EQ(bound.controller->getParameter(1002003), nullptr);
    bound.controller->createVSTMultiCommonParameter();
    EXPECT_EQ(bound.controller->getParameterCount(), kParameters);
}

TEST(CreateVSTPartParameter, AddsTheParametersWithoutALibraryToo)
{
    const auto controller = owned(new VstK2xController);
    controller->createVSTPartParameter(17, 15, kPart);
    controller->createVSTNotAutomationParameter();
    EXPECT_EQ(controller->getParameterCount(), 15);
    EXPECT_NE(controller->getParameter(kVolume16), nullptr);
    EXPECT_NE(controller->getParameter(kEditFlag), nullptr);
    EXPECT_EQ(controller->getParamNormalized(kVolume16), 0);
}

} // namespace
