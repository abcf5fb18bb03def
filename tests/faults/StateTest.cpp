// The project's state in both readings, and presets and user banks into the controller.
#include "tests/doubles/PresetFileBytes.h"
#include "tests/faults/HostBlock.h"
#include "tests/faults/Scenario.h"

#include <algorithm>

namespace faults {
namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::le32;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<char> kState = {'s', 't', 'a', 't', 'e'};

class State : public Scenario {
public:
    void setUp() override
    {
        Scenario::setUp();
        world.library.state = kState;
    }

    void act() override
    {
        auto& component = *world.component;
        world.library.statesSet.clear();
        world.library.stateTextsSet.clear();
        results.assign(3, -1);
        HostStream saved(world.host);
        world.step("getState", [&] { results[0] = component.getState(&saved); });
        bytes = saved.bytes;
        HostStream restored(world.host, le32(0) + le32(5) + "state");
        world.step("setState", [&] { results[1] = component.setState(&restored); });
        HostStream text(world.host, std::string("H\0i\0", 4));
        world.library.stateFormat = 1;
        world.step("setState", [&] { results[2] = component.setState(&text); });
        world.library.stateFormat = 0;
        EXPECT_EQ(saved.references, 1);
        EXPECT_EQ(restored.references, 1);
        EXPECT_EQ(text.references, 1);
    }

    void expectDone() override
    {
        EXPECT_THAT(results, ElementsAre(kResultOk, kResultOk, kResultOk));
        EXPECT_EQ(bytes, le32(0) + le32(5) + "state");
        EXPECT_THAT(world.library.statesSet, ElementsAre(kState));
        EXPECT_THAT(world.library.stateTextsSet, ElementsAre(u"Hi"));
    }

    /** What fails tells so, and hands the library nothing that is not a whole state. */
    void expectStated(const Fault& fault) override
    {
        const auto failures = 3 - std::count(results.begin(), results.end(), kResultOk);
        EXPECT_EQ(std::count(results.begin(), results.end(), kResultFalse), failures);
        if (fault.kind == Kind::kHostAnswers || fault.kind == Kind::kHostThrows) {
            EXPECT_EQ(failures, 1) << "a stream that failed was not noticed";
        }
        if (fault.kind == Kind::kLibraryThrows) {
            EXPECT_EQ(failures, 1) << "a library that threw was not noticed";
        }
        if (fault.kind == Kind::kNoMemory) {
            EXPECT_EQ(failures, 1) << "memory that was not there was not noticed";
        }
        if (results[0] != kResultOk) {
            EXPECT_LE(bytes.size(), 8u) << "a state that failed was written all the same";
        }
        if (results[1] != kResultOk && !fault.hit("setStateChunk")) {
            EXPECT_THAT(world.library.statesSet, IsEmpty());
        }
        for (const auto& state : world.library.statesSet)
            EXPECT_TRUE(state == kState || fault.kind == Kind::kShortTransfer);
    }

private:
    std::vector<tresult> results;
    std::string bytes;
};

const std::string kPreset = le32(1) + le32(3) + le32(7);
const std::string kUserBank = le32(2) + le32(9) + le32(4) + le32(3) + "abc";

class Presets : public Scenario {
public:
    void act() override
    {
        auto& controller = *world.controller;
        world.trace.clear();
        world.library.userBanksApplied.clear();
        results.assign(4, -1);
        HostStream preset(world.host, kPreset);
        world.step("setState", [&] { results[0] = controller.setState(&preset); });
        HostStream userBank(world.host, kUserBank);
        world.step("setState", [&] { results[1] = controller.setState(&userBank); });
        HostStream other(world.host, le32(3) + le32(9));
        world.step("setState", [&] { results[2] = controller.setState(&other); });
        HostStream saved(world.host);
        world.step("getState", [&] { results[3] = controller.getState(&saved); });
        EXPECT_EQ(saved.bytes, "");
        EXPECT_EQ(preset.references, 1);
        EXPECT_EQ(userBank.references, 1);
    }

    void expectDone() override
    {
        EXPECT_THAT(world.calls({"library."}), ElementsAre("library.applyPreset(3, 7)",
                                                           "library.applyUserBank(9, 4, 3 bytes)"));
        EXPECT_THAT(world.library.userBanksApplied, ElementsAre(std::vector<char>{'a', 'b', 'c'}));
        EXPECT_THAT(results, testing::Each(kResultOk));
    }

    /** The host hears of no failure, and the other one is loaded all the same. */
    void expectStated(const Fault&) override
    {
        EXPECT_THAT(results, testing::Each(kResultOk));
        EXPECT_GE(world.calls({"library.apply"}).size(), 1u);
        EXPECT_LE(world.calls({"library.apply"}).size(), 2u);
    }

private:
    std::vector<tresult> results;
};

TEST(Faults, ProjectState)
{
    injectFaults<State>("project state, both kinds");
}

TEST(Faults, PresetsAndUserBanks)
{
    injectFaults<Presets>("presets and user banks");
}

} // namespace
} // namespace faults
