// The controller's interfaces, its view, and the messages that it sends to the processor.
#include "hostapi/IExternalEffectUsingSKI.h"
#include "tests/unit/BoundController.h"

#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivstmidicontrollers.h"

#include <cmath>
#include <cstring>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

uint32 referencesOf(FUnknown& object)
{
    object.addRef();
    return object.release();
}

TEST(ControllerQueryInterface, GivesEachInterfaceWithAReference)
{
    const auto controller = owned(new VstK2xController);
    FUnknown& unknown = *static_cast<IEditController*>(controller);
    ASSERT_EQ(referencesOf(unknown), 1u);
    const auto expectFace = [&](const FUID& iid, void* face) {
        void* got = nullptr;
        EXPECT_EQ(controller->queryInterface(iid, &got), kResultOk);
        EXPECT_NE(got, nullptr);
        EXPECT_TRUE(!face || got == face);
        EXPECT_EQ(referencesOf(unknown), 2u);
        controller->release();
    };
    VstK2xController* whole = controller;
    expectFace(IUnitInfo::iid, static_cast<IUnitInfo*>(whole));
    expectFace(IExternalEffectUsingSKI::iid, static_cast<IExternalEffectUsingSKI*>(whole));
    expectFace(IDependent::iid, static_cast<IDependent*>(whole));
    expectFace(IEditController::iid, static_cast<IEditController*>(whole));
    expectFace(IEditController2::iid, static_cast<IEditController2*>(whole));
    expectFace(IConnectionPoint::iid, static_cast<IConnectionPoint*>(whole));
    expectFace(IPluginBase::iid, nullptr);
    expectFace(FUnknown::iid, nullptr);
    EXPECT_EQ(referencesOf(unknown), 1u);
}

TEST(ControllerQueryInterface, RefusesTheInterfacesOfLibraryAndService)
{
    const auto controller = owned(new VstK2xController);
    for (const FUID& iid : {IExternalPlugin::iid, IComponent::iid, IMidiMapping::iid,
                            IProgramListData::iid, IComponentHandler::iid, FUID(1, 2, 3, 4)}) {
        void* got = controller.get();
        EXPECT_EQ(controller->queryInterface(iid, &got), kNoInterface);
        EXPECT_EQ(got, nullptr);
    }
    EXPECT_EQ(referencesOf(*static_cast<IEditController*>(controller)), 1u);
}

TEST(ControllerQueryInterface, GivesAnObjectWhoseGetReturnGainIsTheSquareRootOfTwo)
{
    const auto controller = owned(new VstK2xController);
    float gain = 0;
    EXPECT_EQ(controller->getReturnGain(gain), kResultOk);
    EXPECT_FLOAT_EQ(gain, std::sqrt(2.0F));
}

TEST(ControllerCreateInstance, GivesAnEditControllerWithOneReference)
{
    FUnknown* created = VstK2xController::createInstance(nullptr);
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(referencesOf(*created), 1u);
    EXPECT_NE(FCast<VstK2xController>(created), nullptr);
    EXPECT_EQ(created->release(), 0u);
}

TEST(CreateView, MakesAViewForTheExactNameOnly)
{
    BoundController bound;
    bound.initialize();
    for (const char* name : {"Editor", "EDITOR", "edito", "editor ", " editor", "editors", "", "e"})
        EXPECT_EQ(bound.controller->createView(name), nullptr) << name;
    EXPECT_EQ(bound.controller->createView(nullptr), nullptr);
    EXPECT_THAT(bound.trace.texts(), IsEmpty());
    const auto view = owned(bound.controller->createView("editor"));
    ASSERT_TRUE(view);
    EXPECT_THAT(bound.trace.texts(), ElementsAre("library.getEditorRect()"));
}

TEST(CreateView, GivesANewViewEachTimeThatTheCallerAloneHolds)
{
    BoundController bound;
    bound.initialize();
    auto first = owned(bound.controller->createView("editor"));
    const auto second = owned(bound.controller->createView("editor"));
    EXPECT_NE(first, second);
    EXPECT_EQ(referencesOf(*first), 1u);
    // Each view holds a reference to the controller.
    EXPECT_EQ(referencesOf(*static_cast<IEditController*>(bound.controller)), 3u);
    first = nullptr;
    EXPECT_EQ(referencesOf(*static_cast<IEditController*>(bound.controller)), 2u);
}

TEST(CreateView, MakesAViewWithoutALibraryToo)
{
    const auto controller = owned(new VstK2xController);
    const auto view = owned(controller->createView("editor"));
    ASSERT_TRUE(view);
    ViewRect rect(1, 2, 3, 4);
    EXPECT_EQ(view->getSize(&rect), kResultTrue);
    EXPECT_EQ(rect.getWidth(), 0);
    EXPECT_EQ(rect.getHeight(), 0);
}

class ControllerConnect : public testing::Test {
protected:
    /** The messages that the peer got, as texts. */
    std::vector<std::string> sent()
    {
        std::vector<std::string> result;
        for (const auto& message : bound.host.peer.received) {
            std::string text = message.id;
            if (message.address)
                text += *message.address == static_cast<VstIEditorConnect*>(&bound.library)
                            ? " library"
                            : (*message.address ? " other" : " null");
            if (message.integer)
                text += " " + std::to_string(*message.integer);
            result.push_back(text);
        }
        return result;
    }
    IConnectionPoint* peer() { return &bound.host.peer; }

    BoundController bound;
};

TEST_F(ControllerConnect, SendsTheLibraryAndTheUnicodeFlag)
{
    bound.initialize();
    EXPECT_EQ(bound.controller->connect(peer()), kResultOk);
    EXPECT_THAT(sent(),
                ElementsAre("VST_CONNECT_MESSAGE_ID library", "VST_ISUNICODE_HOST_MESSAGE_ID 1"));
    EXPECT_EQ(bound.controller->disconnect(peer()), kResultOk);
    EXPECT_EQ(sent().back(), "VST_DISCONNECT_MESSAGE_ID library");
}

TEST_F(ControllerConnect, SendsZeroInAHostWithoutUnicode)
{
    bound.initialize();
    bound.host.context.characterSet = kResultFalse;
    bound.controller->connect(peer());
    EXPECT_EQ(sent().back(), "VST_ISUNICODE_HOST_MESSAGE_ID 0");
    bound.controller->disconnect(peer());
}

TEST_F(ControllerConnect, UsesOneMessageForBoth)
{
    bound.initialize();
    bound.controller->connect(peer());
    EXPECT_EQ(bound.trace.textsOf({"context.createInstance"}).size(), 1u);
    bound.controller->disconnect(peer());
    EXPECT_EQ(bound.trace.textsOf({"context.createInstance"}).size(), 2u);
}

TEST_F(ControllerConnect, StopsSendingAtThePeersFirstRefusal)
{
    bound.initialize();
    bound.host.peer.notifyResults = {kNotImplemented};
    EXPECT_EQ(bound.controller->connect(peer()), kNotImplemented);
    EXPECT_THAT(sent(), ElementsAre("VST_CONNECT_MESSAGE_ID library"));
    EXPECT_THAT(bound.trace.textsOf({"library.getParameterValue("}), SizeIs(kParameters));
    EXPECT_EQ(bound.trace.count("library.parametersReady()"), 1u);
    bound.controller->disconnect(peer());
}

TEST_F(ControllerConnect, AnswersTheResultOfTheSecondMessage)
{
    bound.initialize();
    bound.host.peer.notifyResults = {kResultOk, kResultFalse};
    EXPECT_EQ(bound.controller->connect(peer()), kResultFalse);
    EXPECT_EQ(sent().size(), 2u);
    bound.controller->disconnect(peer());
}

TEST_F(ControllerConnect, SkipsMessagesThatTheHostCannotMake)
{
    bound.initialize();
    bound.host.failAt("createInstance");
    EXPECT_EQ(bound.controller->connect(peer()), kResultOk);
    EXPECT_THAT(sent(), IsEmpty());
    EXPECT_THAT(bound.trace.textsOf({"library.getParameterValue("}), SizeIs(kParameters));
    EXPECT_EQ(bound.trace.count("library.parametersReady()"), 1u);
    EXPECT_EQ(bound.controller->disconnect(peer()), kResultOk);
    EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(ControllerConnect, SendsMessagesWithoutAttributesAsTheyAre)
{
    bound.initialize();
    bound.host.failAt("getAttributes");
    EXPECT_EQ(bound.controller->connect(peer()), kResultOk);
    EXPECT_EQ(bound.controller->disconnect(peer()), kResultOk);
    EXPECT_THAT(sent(), ElementsAre("VST_CONNECT_MESSAGE_ID", "VST_ISUNICODE_HOST_MESSAGE_ID",
                                    "VST_DISCONNECT_MESSAGE_ID"));
}

TEST_F(ControllerConnect, FailsForAPeerThatThrows)
{
    bound.initialize();
    bound.host.throwAt("peer.notify");
    EXPECT_EQ(bound.controller->connect(peer()), kResultFalse);
    EXPECT_EQ(bound.trace.count("library.parametersReady()"), 1u);
    EXPECT_EQ(bound.controller->disconnect(peer()), kResultOk);
}

TEST_F(ControllerConnect, RefreshesTheParametersAndSendsNothingTheSecondTime)
{
    bound.initialize();
    bound.controller->connect(peer());
    bound.trace.clear();
    EXPECT_EQ(bound.controller->connect(peer()), kResultFalse);
    EXPECT_EQ(sent().size(), 2u);
    EXPECT_THAT(bound.trace.textsOf({"library.getParameterValue("}), SizeIs(kParameters));
    EXPECT_EQ(bound.trace.count("library.parametersReady()"), 1u);
    bound.controller->disconnect(peer());
}

TEST_F(ControllerConnect, RefreshesTheParametersAndSendsNothingForANullPeer)
{
    bound.initialize();
    EXPECT_EQ(bound.controller->connect(nullptr), kInvalidArgument);
    EXPECT_THAT(bound.trace.textsOf({"context.createInstance", "peer."}), IsEmpty());
    EXPECT_THAT(bound.trace.textsOf({"library.getParameterValue("}), SizeIs(kParameters));
    EXPECT_EQ(bound.trace.count("library.parametersReady()"), 1u);
}

TEST_F(ControllerConnect, RefreshesTheParametersInTheirOrder)
{
    bound.initialize();
    bound.controller->connect(peer());
    std::vector<std::string> expected;
    for (int32 index = 0; index < bound.controller->getParameterCount(); ++index) {
        ParameterInfo info = {};
        bound.controller->getParameterInfo(index, info);
        expected.push_back("library.getParameterValue(" + std::to_string(info.id) + ")");
    }
    ASSERT_THAT(expected, SizeIs(kParameters));
    EXPECT_EQ(bound.trace.textsOf({"library.getParameterValue("}), expected);
    bound.controller->disconnect(peer());
}

TEST_F(ControllerConnect, TellsThePeerOfADisconnectFromAnybody)
{
    bound.initialize();
    bound.controller->connect(peer());
    const auto stranger = owned(new VstK2xController);
    EXPECT_EQ(bound.controller->disconnect(stranger), kResultFalse);
    EXPECT_EQ(sent().back(), "VST_DISCONNECT_MESSAGE_ID library");
    EXPECT_EQ(bound.controller->disconnect(nullptr), kResultFalse);
    EXPECT_EQ(sent().size(), 4u);
    EXPECT_EQ(bound.controller->disconnect(peer()), kResultOk);
    EXPECT_EQ(sent().size(), 5u);
    EXPECT_EQ(bound.controller->disconnect(peer()), kResultFalse);
    EXPECT_EQ(sent().size(), 5u);
}

TEST_F(ControllerConnect, SendsNullWithoutALibrary)
{
    bound.host.service.makesComponent = false;
    if (bound.controller->initialize(&bound.host.context) == kResultOk)
        GTEST_SKIP() << "this machine has the editor library";
    bound.controller->connect(peer());
    EXPECT_THAT(sent(),
                ElementsAre("VST_CONNECT_MESSAGE_ID null", "VST_ISUNICODE_HOST_MESSAGE_ID 1"));
    bound.controller->disconnect(peer());
    EXPECT_EQ(sent().back(), "VST_DISCONNECT_MESSAGE_ID null");
}

TEST(RefreshAtConnect, ShowsTheHostTheEditorsValuesOfThatMoment)
{
    BoundController bound;
    bound.initialize();
    bound.library.setParameterValue(kVolume1, 3);
    bound.controller->connect(&bound.host.peer);
    ParameterInfo info = {};
    ASSERT_EQ(bound.controller->getParameterInfo(0, info), kResultOk);
    EXPECT_EQ(info.defaultNormalizedValue, 0.75);
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 0.75);
    EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), 3);
    EXPECT_THAT(bound.edits(), IsEmpty());
    EXPECT_EQ(bound.trace.texts().back(), "library.parametersReady()");
    bound.controller->disconnect(&bound.host.peer);
}

} // namespace
