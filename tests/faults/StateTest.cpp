// getState and setState of the processor, with a binary and a text state, and setState of the
// controller with presets and user banks.
#include "tests/doubles/NonsenseText.h"
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
        bytes = saved.data;
        HostStream restored(world.host, le32(0) + le32(5) + "state");
        world.step("setState, binary", [&] { results[1] = component.setState(&restored); });
        HostStream text(world.host, std::string("H\0i\0", 4));
        world.library.stateFormat = 1;
        world.step("setState, text", [&] { results[2] = component.setState(&text); });
        world.library.stateFormat = 0;
        EXPECT_EQ(saved.getReferences(), 1);
        EXPECT_EQ(restored.getReferences(), 1);
        EXPECT_EQ(text.getReferences(), 1);
    }

    void expectDone() override
    {
        EXPECT_THAT(results, ElementsAre(kResultOk, kResultOk, kResultOk));
        EXPECT_EQ(bytes, le32(0) + le32(5) + "state");
        EXPECT_THAT(world.library.statesSet, ElementsAre(kState));
        EXPECT_THAT(world.library.stateTextsSet, ElementsAre(u"Hi"));
    }

    /** A call that fails answers kResultFalse, and the library gets whole states only. */
    void expectStated(const Fault& fault) override
    {
        const auto failures = 3 - std::count(results.begin(), results.end(), kResultOk);
        EXPECT_EQ(std::count(results.begin(), results.end(), kResultFalse), failures);
        if (fault.is(Kind::kHostAnswers) || fault.is(Kind::kHostThrows)) {
            EXPECT_EQ(failures, 1) << "a stream that failed was not noticed";
        }
        if (fault.is(Kind::kLibraryThrows)) {
            EXPECT_EQ(failures, 1) << "a library that threw was not noticed";
        }
        if (fault.isOutOfMemory()) {
            EXPECT_GE(failures, 1) << "memory that was not there was not noticed";
        }
        if (results[0] != kResultOk) {
            EXPECT_LE(bytes.size(), 8u) << "a state that failed was written all the same";
        }
        if (results[1] != kResultOk && !fault.hit("setStateChunk")) {
            EXPECT_THAT(world.library.statesSet, IsEmpty());
        }
        for (const auto& state : world.library.statesSet)
            EXPECT_TRUE(state == kState || isTransfer(fault));
        if (isTransfer(fault))
            expectTransferred(fault);
        expectOthersDone(fault);
    }

    /** Any format but text is binary. Any result but 0 is a failure. */
    void expectBelieved(const Fault& fault) override
    {
        if (fault.hit("getStateFormat")) {
            EXPECT_THAT(results, testing::Each(kResultOk));
            EXPECT_THAT(world.library.stateTextsSet,
                        testing::SizeIs(fault.in("setState, text") ? 0 : 1));
        }
        if (fault.hit("setStateText")) {
            EXPECT_EQ(results[2], kResultFalse);
        }
        if (fault.hit("seek")) { // a negative size fails; of a huge one, missing bytes are zeros
            EXPECT_EQ(results[2], fault.is(Kind::kHostNonsense) ? kResultFalse : kResultOk);
            EXPECT_EQ(world.library.stateTextsSet.size(), fault.is(Kind::kHostNonsense) ? 0u : 1u);
        }
        if (fault.hit("getStateChunk")) { // any bytes are stored
            const auto told = nonsenseOf(fault);
            EXPECT_EQ(bytes, le32(0) + le32(static_cast<int32>(told.size())) + told);
        }
        expectOthersDone(fault);
    }

private:
    static bool isTransfer(const Fault& fault)
    {
        return fault.is(Kind::kShortTransfer) || fault.is(Kind::kEmptyTransfer);
    }

    static std::string nonsenseOf(const Fault& fault)
    {
        if (fault.is(Kind::kLibraryBrokenText))
            return doubles::nonsenseBytes(doubles::Nonsense::kBrokenText);
        if (fault.is(Kind::kLibraryEndlessText))
            return doubles::nonsenseBytes(doubles::Nonsense::kEndlessText);
        return {};
    }

    /** The stream reports success, so a number keeps its initial value and missing bytes of a state
        or text are zeros. */
    void expectTransferred(const Fault& fault) const
    {
        if (!fault.in("setState, binary"))
            return;
        const auto& states = world.library.statesSet;
        if (results[1] != kResultOk || states.empty())
            return; // the version was unknown or the size 0
        EXPECT_EQ(states.front().size(), kState.size());
        if (fault.is(Kind::kEmptyTransfer)) {
            EXPECT_EQ(states.front(), std::vector<char>(kState.size(), 0));
        }
    }

    /** A fault in one call does not affect the others. */
    void expectOthersDone(const Fault& fault) const
    {
        if (!fault.in("getState") && !fault.is(Kind::kNoMoreMemory)) {
            EXPECT_EQ(bytes, le32(0) + le32(5) + "state");
        }
        if (!fault.in("setState, binary") && !fault.is(Kind::kNoMoreMemory)) {
            EXPECT_THAT(world.library.statesSet, ElementsAre(kState));
        }
        if (fault.in("getState") || fault.in("setState, binary")) {
            EXPECT_TRUE(fault.is(Kind::kNoMoreMemory) || results[2] == kResultOk);
        }
    }

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
        world.step("preset", [&] { results[0] = controller.setState(&preset); });
        HostStream userBank(world.host, kUserBank);
        world.step("user bank", [&] { results[1] = controller.setState(&userBank); });
        HostStream other(world.host, le32(3) + le32(9));
        world.step("other", [&] { results[2] = controller.setState(&other); });
        HostStream saved(world.host);
        world.step("getState", [&] { results[3] = controller.getState(&saved); });
        EXPECT_EQ(saved.data, "");
        EXPECT_EQ(preset.getReferences(), 1);
        EXPECT_EQ(userBank.getReferences(), 1);
    }

    void expectDone() override
    {
        EXPECT_THAT(world.calls({"library."}), ElementsAre("library.applyPreset(3, 7)",
                                                           "library.applyUserBank(9, 4, 3 bytes)"));
        EXPECT_THAT(world.library.userBanksApplied, ElementsAre(std::vector<char>{'a', 'b', 'c'}));
        EXPECT_THAT(results, testing::Each(kResultOk));
    }

    /** The controller reports no failure, and a fault in one state does not affect the other. */
    void expectStated(const Fault& fault) override
    {
        EXPECT_THAT(results, testing::Each(kResultOk));
        const auto applied = world.calls({"library.apply"});
        EXPECT_LE(applied.size(), 2u);
        if (!fault.in("preset")) {
            EXPECT_EQ(applied.front(), "library.applyPreset(3, 7)");
        }
        if (!fault.in("user bank") && !fault.is(Kind::kNoMoreMemory)) {
            EXPECT_EQ(applied.back(), "library.applyUserBank(9, 4, 3 bytes)");
        }
        if (fault.isOutOfMemory()) {
            EXPECT_EQ(applied.size(), 1u) << "applied without memory for its bytes";
        }
    }

    void expectBelieved(const Fault& fault) override { expectStated(fault); }

private:
    std::vector<tresult> results;
};

TEST(Faults, GetStateAndSetStateOfTheProcessor)
{
    injectFaults<State>("project state, both kinds");
}

TEST(Faults, SetStateOfTheController)
{
    injectFaults<Presets>("presets and user banks");
}

} // namespace
} // namespace faults
