// The check of the debug preset: an operation declared [host main thread] ends the program when
// another thread calls it.
#include "controller/VstK2xController.h"
#include "processor/VstK2x.h"
#include "view/VstK2xEditorView.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <thread>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

using Operations = std::map<std::string, std::function<void()>>;

/** Each operation must work on this thread and end the program on another. */
void expectTheHostThreadAlone(const Operations& operations)
{
    for (const auto& [name, operation] : operations) {
        operation();
        EXPECT_DEATH(std::thread(operation).join(),
                     "^" + name + " on another thread than the host's main thread");
    }
}

TEST(HostThreadDeathTest, EndsAControllerCallOnAnotherThread)
{
    const auto controller = owned(new VstK2xController);
    controller->initialize(nullptr);
    expectTheHostThreadAlone({
        {"connect", [&] { controller->connect(nullptr); }},
        {"disconnect", [&] { controller->disconnect(nullptr); }},
        {"setComponentState", [&] { controller->setComponentState(nullptr); }},
        {"setState", [&] { controller->setState(nullptr); }},
        {"getState", [&] { controller->getState(nullptr); }},
        {"createView", [&] { controller->createView(nullptr); }},
        {"setComponentHandler", [&] { controller->setComponentHandler(nullptr); }},
        {"hostReadyForSetPortConnections", [&] { controller->hostReadyForSetPortConnections(); }},
        {"terminate", [&] { controller->terminate(); }},
    });
}

TEST(HostThreadDeathTest, EndsAProcessorCallOnAnotherThread)
{
    const auto processor = owned(new VstK2x);
    processor->initialize(nullptr);
    ProcessSetup setup = {};
    expectTheHostThreadAlone({
        {"notify", [&] { processor->notify(nullptr); }},
        {"setupProcessing", [&] { processor->setupProcessing(setup); }},
        {"setState", [&] { processor->setState(nullptr); }},
        {"getState", [&] { processor->getState(nullptr); }},
        {"terminate", [&] { processor->terminate(); }},
    });
}

TEST(HostThreadDeathTest, EndsAViewCallOnAnotherThread)
{
    const auto view = owned(new VstK2xEditorView(nullptr, nullptr));
    ParamID id = 0;
    expectTheHostThreadAlone({
        {"isPlatformTypeSupported", [&] { view->isPlatformTypeSupported(nullptr); }},
        {"attached", [&] { view->attached(nullptr, nullptr); }},
        {"removed", [&] { view->removed(); }},
        {"onFocus", [&] { view->onFocus(true); }},
        {"onKeyDown", [&] { view->onKeyDown(0, 0, 0); }},
        {"onKeyUp", [&] { view->onKeyUp(0, 0, 0); }},
        {"onWheel", [&] { view->onWheel(0); }},
        {"findParameter", [&] { view->findParameter(0, 0, id); }},
    });
}

TEST(HostThread, InitializeMakesTheCallingThreadTheHostThread)
{
    const auto processor = owned(new VstK2x);
    processor->initialize(nullptr);
    processor->terminate();
    std::thread([&] {
        processor->initialize(nullptr);
        processor->setState(nullptr);
        processor->terminate();
    }).join();
}

TEST(HostThread, SetStateMayComeFromAnyThreadBeforeInitialize)
{
    const auto processor = owned(new VstK2x);
    std::thread([&] { processor->setState(nullptr); }).join();
}

} // namespace
