#include "tests/hosts/ardour/ArdourRun.h"

#include "tests/hosts/HostsTable.h"
#include "tests/hosts/PartParameters.h"

#include <array>
#include <gmock/gmock.h>
#include <memory>

namespace {

using namespace hosts;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

using Values = ArdourSession::Values;

constexpr const char* kUniqueId = "13EEE3484D664261B90352CE35DD18B4";

/** Ardour runs once. Each test looks at one of its results. */
class Ardour : public testing::Test {
protected:
    static void SetUpTestSuite() { run = std::make_unique<ArdourRun>(); }
    static void TearDownTestSuite() { run = nullptr; }

    static void tried(const std::string& what) { hosts::tried(run->version, what); }

    static std::unique_ptr<ArdourRun> run;
};

std::unique_ptr<ArdourRun> Ardour::run;

TEST_F(Ardour, ScansTheBundle)
{
    tried("scan of the bundle by ardour-vst3-scanner");
    EXPECT_EQ(run->scan.status, 0) << run->scan.text;
    EXPECT_EQ(run->scan.text, "");
    EXPECT_THAT(run->cache, HasSubstr("uid=\"" + std::string(kUniqueId) + "\""));
    for (const char* text : {"name=\"RDL3/RDL5 VST\"", "n_inputs=\"0\"", "n_outputs=\"4\"",
                             "n_midi_inputs=\"1\"", "n_midi_outputs=\"1\""})
        EXPECT_THAT(run->cache, HasSubstr(text));
}

TEST_F(Ardour, ListsTheInstrument)
{
    tried("list of plug-ins: an instrument, with name, vendor, category and unique ID");
    EXPECT_THAT(run->recorded.all("listed"),
                ElementsAre(Values{"RDL3/RDL5 VST", "Tavrin Corporation",
                                   "Instrument|External|OnlyRT|DSPBased", kUniqueId, "true"}))
        << run->recorded.messages();
}

TEST_F(Ardour, MakesATrackWithTheInstrument)
{
    tried("a MIDI track with the plug-in as its instrument");
    const Values instance{"RDL3/RDL5 VST", kUniqueId, "Tavrin Corporation"};
    EXPECT_THAT(run->recorded.all("instance"), ElementsAre(instance));
    EXPECT_THAT(run->recorded.all("streams"), ElementsAre(Values{"1", "1", "2"}));
    // A host of neither the Cubase family nor the maker.
    EXPECT_EQ(run->recorded.reported("host-type"), "2");
}

TEST_F(Ardour, ShowsTheParameters)
{
    tried("parameters that can be automated: titles, ranges, start values");
    const auto parameters = run->recorded.all("parameter");
    ASSERT_THAT(parameters, SizeIs(kAutomatable));
    for (int index = 0; index < kAutomatable; ++index) {
        const auto expected = expectedParameter(index);
        EXPECT_THAT(parameters[static_cast<size_t>(index)],
                    ElementsAre(std::to_string(index), expected.title, "0.0", "1.0",
                                std::to_string(expected.value), "true", "true"));
    }
}

TEST_F(Ardour, SendsNotesToTheLibrary)
{
    tried("notes from the virtual keyboard's port reach the library");
    const auto& session = run->recorded;
    ASSERT_THAT(session.all("played"), SizeIs(6));
    const std::array<size_t, 16> notes{3, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1};
    for (size_t channel = 0; channel < notes.size(); ++channel)
        for (const std::string kind : {"note-ons ", "note-offs "}) {
            const auto name = kind + std::to_string(channel);
            EXPECT_EQ(session.reported(name),
                      notes[channel] > 0 ? std::to_string(notes[channel]) : "")
                << name;
        }
    EXPECT_EQ(session.reported("other-midi"), "0");
}

// The notes are played at velocity 100, and the plug-in makes that 127. It ends a note with a
// note-on of velocity 0. Without that, a recorded note would last into the next one.
TEST_F(Ardour, RecordsWhatComesOutOfMidiOut)
{
    tried("\"Midi Out\" recorded by a second track: every note with its end");
    const auto played = run->recorded.all("played");
    const auto recorded = run->recorded.all("recorded");
    ASSERT_THAT(played, SizeIs(6));
    ASSERT_EQ(recorded.size(), played.size()) << run->recorded.messages();
    double end = 0;
    for (size_t index = 0; index < played.size(); ++index) {
        ASSERT_THAT(recorded[index], SizeIs(5));
        EXPECT_EQ((Values{recorded[index][0], recorded[index][1]}), played[index]);
        EXPECT_EQ(recorded[index][2], "127") << index;
        const double begin = std::stod(recorded[index][3]);
        EXPECT_GE(begin, end);
        end = begin + std::stod(recorded[index][4]);
        EXPECT_GT(end, begin);
    }
}

TEST_F(Ardour, AutomatesParameters)
{
    tried("automation: a lane while the transport rolls, and all other parameters set one by one");
    const auto& session = run->recorded;
    EXPECT_THAT(session.all("set"), ElementsAre(Values{"1", "1"}));
    EXPECT_GE(std::stoi("0" + session.reported("automation")), kAutomatable);
    // The lane ends at three quarters of 127: 95.25, rounded to 95.
    EXPECT_THAT(session.parameters(), Contains("parameter 37012000 95"));
    // Each is set to its index in the host, modulo 128.
    for (const int index : {1, doubles::kParametersOfAPart, kAutomatable - 2, kAutomatable - 1})
        EXPECT_THAT(session.parameters(),
                    Contains("parameter " + std::to_string(expectedParameter(index).id) + " " +
                             std::to_string(index % 128)));
    EXPECT_THAT(session.parameters(), SizeIs(kParameters));
}

TEST_F(Ardour, RestoresTheSessionInANewProcess)
{
    tried("session saved and loaded in a new process, the plug-in switched off so that nothing "
          "changes what was restored");
    const auto& session = run->inactive;
    EXPECT_THAT(run->recorded.all("saved"), ElementsAre(Values{"0"}, Values{"0"}));
    const Values instance{"RDL3/RDL5 VST", kUniqueId, "Tavrin Corporation"};
    EXPECT_THAT(session.all("instance"), ElementsAre(instance)) << session.messages();
    EXPECT_THAT(session.all("active"), ElementsAre(Values{"false"}));
    // Six numbers (magic, version, voice, counts), then each ID and value that can be automated.
    EXPECT_EQ(session.count("call setStateChunk(" + std::to_string(6 * 4 + kAutomatable * 8) + ")"),
              1u);
    EXPECT_EQ(session.parameters(), run->recorded.parameters());
    hosts::found("all parameters as they were");
}

// When the state is loaded, Ardour reads the parameters from the controller, which still has those
// of its connecting, and sends the processor those that differ from the state.
TEST_F(Ardour, SendsTheControllersValuesAfterTheState)
{
    tried("the same with the plug-in running");
    const auto& session = run->active;
    EXPECT_THAT(session.all("active"), ElementsAre(Values{"true"})) << session.messages();
    EXPECT_EQ(session.count("call setStateChunk(" + std::to_string(6 * 4 + kAutomatable * 8) + ")"),
              1u);
    for (const std::string line : {"parameter 37013000 64", "parameter 37012001 100",
                                   "parameter 37056015 64", "parameter 37057015 64"})
        EXPECT_THAT(session.parameters(), Contains(line));
    hosts::found("the state is loaded, then Ardour sets the parameters back: see below");
}

TEST_F(Ardour, ClosesEverySession)
{
    tried("every session closed: each instance ends, no crash");
    for (const auto* session : {&run->recorded, &run->inactive, &run->active}) {
        EXPECT_EQ(session->output.status, 0) << session->messages();
        EXPECT_EQ(session->count("begin 1"), 1u);
        EXPECT_EQ(session->count("end 1"), 1u);
        EXPECT_EQ(session->count("begin 2"), 0u);
        // The instance ended with the session, before the process did.
        EXPECT_THAT(session->all("ended when closed"), ElementsAre(Values{"1"}));
        EXPECT_EQ(session->count("call setEffectInterface(null)"), 1u);
        EXPECT_EQ(session->count("call setControllerInterface(null)"), 1u);
    }
}

} // namespace
