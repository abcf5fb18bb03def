#include "tests/unit/BoundController.h"

#include "hostapi/IHostApplicationW.h"

#include "pluginterfaces/base/funknownimpl.h"

#include <cmath>
#include <functional>
#include <limits>
#include <thread>
#include <utility>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

void onAnotherThread(const std::function<void()>& work)
{
    std::thread(work).join();
}

/** The threads on which the host was called. */
std::vector<std::thread::id> editThreads(const Trace& trace)
{
    std::vector<std::thread::id> result;
    for (const auto& call : trace.all())
        if (call.text.rfind("host.", 0) == 0)
            result.push_back(call.thread);
    return result;
}

TEST(DispatchAtOnce, TellsAUnicodeHostOnTheLibrarysThread)
{
    BoundController bound;
    bound.initialize();
    std::thread::id libraryThread;
    onAnotherThread([&] {
        libraryThread = std::this_thread::get_id();
        bound.library.turn(kVolume1, 1);
        EXPECT_THAT(bound.edits(),
                    ElementsAre("host.beginEdit(37012000)", "host.performEdit(37012000, 0.25)",
                                "host.endEdit(37012000)"));
    });
    EXPECT_THAT(editThreads(bound.trace), ElementsAre(libraryThread, libraryThread, libraryThread));
    EXPECT_THAT(bound.host.handler.unpairedEdits(), IsEmpty());
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 0.25);
    EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), 1);
    bound.tick();
    EXPECT_EQ(bound.edits().size(), 3u);
}

TEST(DispatchAtOnce, SetsTheParameterBeforeTheHostHearsOfIt)
{
    BoundController bound;
    bound.initialize();
    double seen = -1;
    bound.host.onCall = [&](const std::string& text) {
        if (text.rfind("host.performEdit", 0) == 0)
            seen = bound.controller->getParamNormalized(kVolume1);
    };
    bound.library.turn(kVolume1, 1);
    EXPECT_EQ(seen, 0.25);
}

TEST(DispatchAtOnce, PassesOnAValueOutsideTheRangeAsItIs)
{
    BoundController bound;
    bound.initialize();
    bound.library.turn(kVolume1, 6);
    bound.library.turn(kVolume1, -2);
    EXPECT_EQ(bound.trace.count("host.performEdit(37012000, 1.5)"), 1u);
    EXPECT_EQ(bound.trace.count("host.performEdit(37012000, -0.5)"), 1u);
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 0); // the SDK clamps it
    EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), -2);
}

TEST(DispatchAtOnce, StopsWhenTheHostTerminatesInsideACall)
{
    BoundController bound;
    bound.initialize();
    bound.host.onCall = [&](const std::string& text) {
        if (text.rfind("host.performEdit", 0) == 0) {
            EXPECT_EQ(bound.controller->terminate(), kResultOk);
        }
    };
    onAnotherThread([&] { bound.library.turn(kVolume1, 1); });
    EXPECT_THAT(bound.edits(),
                ElementsAre("host.beginEdit(37012000)", "host.performEdit(37012000, 0.25)"));
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 0);
}

TEST(DispatchAtOnce, SurvivesAHostThatThrows)
{
    BoundController bound;
    bound.initialize();
    for (const char* call : {"beginEdit", "performEdit", "endEdit", "getCharacterSet"}) {
        bound.host.clearFaults();
        bound.host.throwAt(call);
        EXPECT_NO_THROW(bound.library.turn(kVolume1, 1)) << call;
        EXPECT_NO_THROW(bound.library.turn(kVolume1, 2)) << call;
    }
}

TEST(DispatchAtOnce, SetsTheParameterWithoutAComponentHandlerToo)
{
    BoundController bound;
    bound.initialize();
    bound.controller->setComponentHandler(nullptr);
    bound.library.turn(kVolume1, 1);
    EXPECT_THAT(bound.edits(), IsEmpty());
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 0.25);
}

class DrainQueue : public testing::TestWithParam<bool> {
protected:
    BoundController bound{GetParam() ? BoundController::withoutUnicode()
                                     : BoundController::nameless()};
};

INSTANTIATE_TEST_SUITE_P(WithAndWithoutHostApplication, DrainQueue, testing::Bool());

TEST_P(DrainQueue, WaitsForTheTickAndTellsTheHostOnItsThread)
{
    bound.initialize();
    onAnotherThread([this] { bound.library.turn(kVolume1, 1); });
    EXPECT_THAT(bound.edits(), IsEmpty());
    EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), 1);
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 0.5);
    bound.tick();
    EXPECT_THAT(bound.edits(),
                ElementsAre("host.beginEdit(37012000)", "host.performEdit(37012000, 0.25)",
                            "host.endEdit(37012000)"));
    EXPECT_THAT(editThreads(bound.trace), Each(std::this_thread::get_id()));
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 0.25);
    EXPECT_THAT(bound.host.handler.unpairedEdits(), IsEmpty());
    bound.tick();
    EXPECT_EQ(bound.edits().size(), 3u);
}

TEST_P(DrainQueue, DeliversAllEventsInTheirOrderAtOneTick)
{
    bound.library.setParameter(kPan1, {0, 0, 2, 0, {}});
    bound.initialize();
    for (int turn = 0; turn < 100; ++turn) {
        bound.library.turn(kVolume1, turn % 2);
        bound.library.turn(kPan1, 1 + turn % 2);
    }
    bound.tick();
    std::vector<std::string> expected;
    for (int turn = 0; turn < 100; ++turn) {
        expected.emplace_back("host.beginEdit(37012000)");
        expected.emplace_back(turn % 2 ? "host.performEdit(37012000, 0.25)"
                                       : "host.performEdit(37012000, 0)");
        expected.emplace_back("host.endEdit(37012000)");
        expected.emplace_back("host.beginEdit(37013000)");
        expected.emplace_back(turn % 2 ? "host.performEdit(37013000, 1)"
                                       : "host.performEdit(37013000, 0.5)");
        expected.emplace_back("host.endEdit(37013000)");
    }
    EXPECT_EQ(bound.edits(), expected);
}

TEST_P(DrainQueue, DeliversWhatPollingRaisedWithTheSameTick)
{
    bound.initialize();
    bound.library.observer(kVolume16)->atCheck = [this] { bound.library.turn(kVolume1, 1); };
    bound.tick();
    EXPECT_THAT(bound.edits(),
                ElementsAre("host.beginEdit(37012000)", "host.performEdit(37012000, 0.25)",
                            "host.endEdit(37012000)"));
}

TEST_P(DrainQueue, DeliversWhatADeliveryRaisedWithTheSameTick)
{
    bound.library.setParameter(kPan1, {0, 0, 2, 0, {}});
    bound.initialize();
    bound.host.onCall = [&, done = false](const std::string& text) mutable {
        if (text == "host.beginEdit(37012000)" && !done) {
            done = true;
            bound.library.turn(kPan1, 1);
        }
    };
    bound.library.turn(kVolume1, 1);
    bound.tick();
    EXPECT_THAT(bound.edits(),
                ElementsAre("host.beginEdit(37012000)", "host.performEdit(37012000, 0.25)",
                            "host.endEdit(37012000)", "host.beginEdit(37013000)",
                            "host.performEdit(37013000, 0.5)", "host.endEdit(37013000)"));
}

TEST_P(DrainQueue, DeliversOnceInAHostThatTicksInsideACall)
{
    bound.initialize();
    bound.host.onCall = [this](const std::string& text) {
        if (text.rfind("host.", 0) == 0)
            bound.tick();
    };
    bound.library.turn(kVolume1, 1);
    bound.library.turn(kVolume1, 3);
    bound.tick();
    EXPECT_THAT(bound.edits(),
                ElementsAre("host.beginEdit(37012000)", "host.performEdit(37012000, 0.25)",
                            "host.endEdit(37012000)", "host.beginEdit(37012000)",
                            "host.performEdit(37012000, 0.75)", "host.endEdit(37012000)"));
}

TEST_P(DrainQueue, GoesOnWithTheNextEventAfterAHostThatThrew)
{
    bound.initialize();
    bound.library.turn(kVolume1, 1);
    bound.host.throwAt("performEdit");
    EXPECT_NO_THROW(bound.tick());
    EXPECT_THAT(bound.edits(),
                ElementsAre("host.beginEdit(37012000)", "host.performEdit(37012000, 0.25)",
                            "host.endEdit(37012000)"));
    bound.host.clearFaults();
    bound.library.turn(kVolume1, 3);
    bound.tick();
    EXPECT_EQ(bound.edits().size(), 6u);
}

TEST_P(DrainQueue, StopsWhenTheHostTerminatesInsideACall)
{
    bound.initialize();
    bound.host.onCall = [this](const std::string& text) {
        if (text == "host.beginEdit(37012000)")
            bound.controller->terminate();
    };
    bound.library.turn(kVolume1, 1);
    bound.tick();
    EXPECT_THAT(bound.edits(), ElementsAre("host.beginEdit(37012000)"));
    EXPECT_EQ(bound.controller->getParameterCount(), 0);
}

TEST_P(DrainQueue, DeliversNothingOfTheLifeBeforeTerminate)
{
    bound.initialize();
    bound.library.turn(kVolume1, 1);
    bound.controller->terminate();
    bound.initialize();
    bound.tick();
    EXPECT_THAT(bound.edits(), IsEmpty());
}

TEST_P(DrainQueue, DeliversWhileTheControllerConnects)
{
    bound.initialize();
    bound.library.turn(kVolume1, 1);
    bound.library.onCall = [this](const std::string& text) {
        if (text == "library.parametersReady()")
            bound.tick();
    };
    bound.controller->connect(&bound.host.peer);
    EXPECT_EQ(bound.edits().size(), 3u);
    bound.controller->disconnect(&bound.host.peer);
}

TEST_P(DrainQueue, KeepsWhatIsRaisedWhileTheControllerConnects)
{
    bound.initialize();
    bound.library.onCall = [this](const std::string& text) {
        if (text == "library.parametersReady()")
            bound.library.turn(kVolume1, 1);
    };
    bound.controller->connect(&bound.host.peer);
    EXPECT_THAT(bound.edits(), IsEmpty());
    bound.tick();
    EXPECT_EQ(bound.edits().size(), 3u);
    bound.controller->disconnect(&bound.host.peer);
}

TEST(NotificationGuiEvent, AsksForTheCharacterSetAtEveryEvent)
{
    BoundController bound;
    bound.initialize();
    bound.host.context.characterSet = kResultFalse;
    bound.controller->editorBeginEdit(1);
    EXPECT_THAT(bound.edits(), IsEmpty());
    bound.host.context.characterSet = kResultOk;
    bound.controller->editorEndEdit(2);
    EXPECT_THAT(bound.edits(), ElementsAre("host.endEdit(2)"));
    bound.host.hide(IHostApplicationW::iid);
    bound.controller->editorEndEdit(3);
    bound.tick();
    EXPECT_THAT(bound.edits(),
                ElementsAre("host.endEdit(2)", "host.beginEdit(1)", "host.endEdit(3)"));
}

TEST(ControllerConnectMeanwhile, TellsAUnicodeHostOfEventsUntilTheBaseHasConnected)
{
    struct Peer final : U::Implements<U::Directly<IConnectionPoint>> {
        uint32 PLUGIN_API addRef() override
        {
            if (const auto call = std::exchange(atFirstReference, nullptr))
                call();
            return Base::addRef();
        }
        tresult PLUGIN_API connect(IConnectionPoint*) override { return kResultOk; }
        tresult PLUGIN_API disconnect(IConnectionPoint*) override { return kResultOk; }
        tresult PLUGIN_API notify(IMessage*) override { return kResultOk; }
        std::function<void()> atFirstReference;
    };
    BoundController bound;
    bound.initialize();
    const auto peer = owned(new Peer);
    peer->atFirstReference = [&] { bound.library.turn(kVolume1, 1); };
    EXPECT_EQ(bound.controller->connect(peer), kResultOk);
    EXPECT_EQ(bound.edits().size(), 3u);
    bound.controller->disconnect(peer);
}

TEST(ControllerConnectMeanwhile, DropsEventsToAUnicodeHostMeanwhile)
{
    BoundController bound;
    bound.initialize();
    bound.library.onCall = [&](const std::string& text) {
        if (text == "library.getParameterValue(37013000)")
            bound.library.turn(kVolume1, 1);
        if (text == "library.parametersReady()")
            bound.library.turn(kVolume1, 3);
    };
    bound.host.onCall = [&](const std::string& text) {
        if (text == "peer.notify(VST_CONNECT_MESSAGE_ID)")
            bound.library.turn(kVolume1, 0);
    };
    EXPECT_EQ(bound.controller->connect(&bound.host.peer), kResultOk);
    EXPECT_THAT(bound.edits(), IsEmpty());
    EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), 3);
    bound.library.onCall = nullptr;
    bound.tick();
    EXPECT_THAT(bound.edits(), IsEmpty());
    bound.library.turn(kVolume1, 2);
    EXPECT_EQ(bound.edits().size(), 3u);
    bound.controller->disconnect(&bound.host.peer);
}

TEST(ControllerConnectMeanwhile, TellsTheHostOfEventsAgainAfterAConnectThatFailed)
{
    BoundController bound;
    bound.initialize();
    bound.host.throwAt("peer.notify");
    EXPECT_NE(bound.controller->connect(&bound.host.peer), kResultOk);
    EXPECT_NE(bound.controller->connect(nullptr), kResultOk);
    bound.library.turn(kVolume1, 1);
    EXPECT_EQ(bound.edits().size(), 3u);
    bound.host.clearFaults();
    bound.controller->disconnect(&bound.host.peer);
}

} // namespace
