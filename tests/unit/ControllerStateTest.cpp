#include "tests/doubles/StreamDouble.h"
#include "tests/unit/BoundController.h"

#include <limits>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string integers(const std::vector<int32>& values)
{
    std::string result;
    for (const int32 value : values)
        for (int shift = 0; shift < 32; shift += 8)
            result.push_back(static_cast<char>(static_cast<uint32>(value) >> shift));
    return result;
}

std::string preset(int32 bank, int32 number)
{
    return integers({1, bank, number});
}

std::string userBank(int32 bank, int32 number, int32 size, const std::string& data)
{
    return integers({2, bank, number, size}) + data;
}

class ControllerSetState : public testing::Test {
protected:
    ControllerSetState() { bound.initialize(); }

    /** What the library is told when the host restores these bytes. */
    std::vector<std::string> restored(const std::string& bytes)
    {
        StreamDouble stream(bytes);
        return restored(stream);
    }
    std::vector<std::string> restored(StreamDouble& stream)
    {
        bound.trace.clear();
        EXPECT_EQ(bound.controller->setState(&stream), kResultOk);
        EXPECT_EQ(stream.getReferences(), 1);
        return bound.trace.texts();
    }

    BoundController bound;
};

TEST_F(ControllerSetState, SelectsThePresetsVoice)
{
    EXPECT_THAT(restored(preset(3, 127)), ElementsAre("library.applyPreset(3, 127)"));
    EXPECT_THAT(restored(preset(-5, 2147483647)),
                ElementsAre("library.applyPreset(-5, 2147483647)"));
    EXPECT_THAT(restored(preset(3, 4) + "more bytes"), ElementsAre("library.applyPreset(3, 4)"));
}

TEST_F(ControllerSetState, HandsAUserBanksDataBack)
{
    EXPECT_THAT(restored(userBank(8, 2, 5,
                                  std::string("a\0b\xFF"
                                              "c",
                                              5))),
                ElementsAre("library.applyUserBank(8, 2, 5 bytes)"));
    ASSERT_EQ(bound.library.userBanksApplied.size(), 1u);
    EXPECT_EQ(bound.library.userBanksApplied[0], (std::vector<char>{'a', 0, 'b', '\xFF', 'c'}));
}

TEST_F(ControllerSetState, TakesAPresetWithAUserBankBehindItForAPreset)
{
    EXPECT_THAT(restored(preset(3, 4) + userBank(8, 2, 3, "abc")),
                ElementsAre("library.applyPreset(3, 4)"));
}

TEST_F(ControllerSetState, ReadsFromTheStreamsPosition)
{
    StreamDouble stream("front" + preset(3, 4));
    stream.position = 5;
    EXPECT_THAT(restored(stream), ElementsAre("library.applyPreset(3, 4)"));
}

TEST_F(ControllerSetState, ChangesNothingForAnythingElse)
{
    for (const std::string& bytes :
         {std::string(), integers({0, 1, 2}), integers({3, 1, 2}), integers({-1, 1, 2}),
          integers({0x01000000, 1, 2}), std::string("VST3 and more"), std::string("\x01", 1)}) {
        StreamDouble stream(bytes);
        EXPECT_THAT(restored(stream), IsEmpty());
        EXPECT_EQ(stream.position, 0);
    }
    bound.trace.clear();
    EXPECT_EQ(bound.controller->setState(nullptr), kResultOk);
    EXPECT_THAT(bound.trace.texts(), IsEmpty());
}

TEST_F(ControllerSetState, DoesNotApplyAUserBankWithoutASize)
{
    for (const int32 size : {0, -1, std::numeric_limits<int32>::min()})
        EXPECT_THAT(restored(userBank(8, 2, size, "abcd")), IsEmpty()) << size;
}

TEST_F(ControllerSetState, SurvivesAStreamThatFailsAtAnyCall)
{
    // Calls of a preset: marker, back, marker, bank, number.
    const std::vector<std::vector<std::string>> expected = {
        {},                             // no marker
        {},                             // the bank is taken for the marker
        {},                             // the marker cannot be read the second time
        {"library.applyPreset(-1, 3)"}, // the number is read in the bank's place
        {"library.applyPreset(3, -1)"},
    };
    for (size_t call = 1; call <= expected.size(); ++call) {
        StreamDouble stream(preset(3, 4));
        stream.failAtCall = call;
        EXPECT_EQ(restored(stream), expected[call - 1]) << call;
    }
}

TEST_F(ControllerSetState, TakesAShortReadForMissingBytes)
{
    StreamDouble stream(userBank(8, 2, 6, "abcdef"));
    stream.shortRead = 4; // whole fields, and a part of the data
    EXPECT_THAT(restored(stream), ElementsAre("library.applyUserBank(8, 2, 6 bytes)"));
    EXPECT_EQ(bound.library.userBanksApplied.at(0), (std::vector<char>{'a', 'b', 'c', 'd', 0, 0}));
    StreamDouble shorter(userBank(8, 2, 4, "abcd"));
    shorter.shortRead = 2;
    EXPECT_THAT(restored(shorter), IsEmpty());
}

TEST_F(ControllerSetState, SurvivesALibraryThatThrows)
{
    bound.library.throwAt("applyPreset");
    bound.library.throwAt("applyUserBank");
    EXPECT_EQ(restored(preset(3, 4)).size(), 1u);
    EXPECT_EQ(restored(userBank(8, 2, 3, "abc")).size(), 1u);
}

TEST_F(ControllerSetState, ReadsNothingWithoutALibrary)
{
    const auto unbound = owned(new VstK2xController);
    StreamDouble first(preset(3, 4));
    EXPECT_EQ(unbound->setState(&first), kResultOk);
    StreamDouble second(userBank(8, 2, 3, "abc"));
    EXPECT_EQ(unbound->setState(&second), kResultOk);
    EXPECT_EQ(second.position, 0);
}

TEST_F(ControllerSetState, LeavesGetStateAndSetComponentStateWithNothingToDo)
{
    StreamDouble stream("abcd");
    EXPECT_EQ(bound.controller->getState(&stream), kResultOk);
    EXPECT_EQ(bound.controller->setComponentState(&stream), kResultOk);
    EXPECT_EQ(stream.callCount, 0u);
    EXPECT_EQ(stream.data, "abcd");
    EXPECT_EQ(bound.controller->getState(nullptr), kResultOk);
    EXPECT_EQ(bound.controller->setComponentState(nullptr), kResultOk);
    EXPECT_THAT(bound.trace.texts(), IsEmpty());
}

} // namespace
