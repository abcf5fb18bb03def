// What a host with a run loop hears of a loaded state: the values of the library's parameters come
// with the next tick, whichever way events take to the host.
#include "processor/VstK2x.h"
#include "tests/doubles/StreamDouble.h"
#include "tests/unit/BoundController.h"

#include <map>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::IsEmpty;

namespace {

/** Both components, connected, and a library with the value 2 of 0 to 4 for every parameter. When a
    state is loaded it takes other values for four in five of them, and its observers tell of what
    is not as they told last. */
class LoadedState : public testing::TestWithParam<bool> {
protected:
    LoadedState()
    {
        bound.library.defaultParameter = {2, 0, 4, 0, {}};
        bound.initialize();
        processor->initialize(&bound.host.context);
        processor->connect(bound.controller);
        bound.controller->connect(processor);
        bound.library.onCall = [this](const std::string& text) {
            if (text.rfind("library.setStateChunk", 0) == 0 ||
                text.rfind("library.applyPreset", 0) == 0)
                changeValues();
        };
        for (auto* observer : bound.library.liveObservers()) {
            told[observer->id()] = 2;
            observer->atCheck = [this, observer] {
                const int32 value = bound.library.getParameter(observer->id()).value;
                if (std::exchange(told[observer->id()], value) != value)
                    observer->changeValue(value);
            };
        }
        bound.trace.clear();
    }
    ~LoadedState() override
    {
        bound.library.onCall = nullptr;
        bound.controller->disconnect(processor);
        processor->disconnect(bound.controller);
        processor->terminate();
        bound.end();
    }

    void changeValues()
    {
        int32 index = 0;
        for (const auto* observer : bound.library.liveObservers()) {
            const int32 value = index++ % 5;
            bound.library.setParameterValue(observer->id(), value);
            if (value == 2)
                continue;
            std::string edit = "host.performEdit(" + std::to_string(observer->id()) + ", ";
            expected.push_back(edit.append(kNormalized[value]).append(")"));
        }
    }

    void expectTheValuesWithTheNextTick()
    {
        ASSERT_THAT(expected, testing::SizeIs(kParameters * 4 / 5));
        EXPECT_THAT(bound.edits(), IsEmpty());
        for (const auto* observer : bound.library.liveObservers())
            EXPECT_EQ(bound.controller->getParamNormalized(observer->id()), 0.5);
        bound.tick();
        EXPECT_EQ(bound.edits(), expected);
        for (const auto* observer : bound.library.liveObservers())
            EXPECT_EQ(bound.controller->getParamNormalized(observer->id()),
                      bound.library.getParameter(observer->id()).value / 4.);
        bound.tick();
        EXPECT_EQ(bound.edits(), expected);
    }

    static constexpr const char* kNormalized[] = {"0", "0.25", "0.5", "0.75", "1"};

    BoundController bound{GetParam() ? HostFamily::cubase("7.5.1")
                                     : BoundController::withoutUnicode()};
    IPtr<VstK2x> processor = owned(new VstK2x);
    std::map<uint32, int32> told;
    std::vector<std::string> expected;
};

INSTANTIATE_TEST_SUITE_P(DirectAndQueued, LoadedState, testing::Bool(), [](const auto& tested) {
    return tested.param ? "InAUnicodeHost" : "InAnyOtherHost";
});

TEST_P(LoadedState, OfAProjectReachesTheHostWithTheNextTick)
{
    StreamDouble state(std::string("\0\0\0\0\4\0\0\0data", 12));
    EXPECT_EQ(processor->setState(&state), kResultOk);
    expectTheValuesWithTheNextTick();
}

TEST_P(LoadedState, OfAPresetReachesTheHostWithTheNextTick)
{
    StreamDouble preset(std::string("\1\0\0\0\3\0\0\0\4\0\0\0", 12));
    EXPECT_EQ(bound.controller->setState(&preset), kResultOk);
    expectTheValuesWithTheNextTick();
}

} // namespace
