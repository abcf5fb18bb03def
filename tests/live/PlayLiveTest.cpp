// The built play, plug-in and simulator on a synthesizer, in real time.
#include "tests/live/JackPeer.h"
#include "tests/live/JackServer.h"
#include "tests/live/Patience.h"
#include "tests/live/Spawn.h"
#include "tests/tools/MidiBytes.h"
#include "tests/tools/PlayProgram.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace doubles;
using namespace live;
using testing::HasSubstr;
using Bytes = std::vector<uint8_t>;

/** A program in a process group of its own, to which a terminal's Ctrl-C goes. */
class RunningProgram {
public:
    RunningProgram(const Words& words, const std::string& output)
    : process(spawn(words, output, Group::own))
    {
    }
    ~RunningProgram()
    {
        if (process > 0)
            kill(-process, SIGKILL);
        if (process > 0)
            waitpid(process, nullptr, 0);
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /** Ctrl-C. */
    void interrupt() const { kill(-process, SIGINT); }

    /** @return the exit status, or -1 when a signal ended it or it does not end */
    int wait(std::chrono::seconds longest = patience)
    {
        int status = 0;
        if (!waitFor([&] { return waitpid(process, &status, WNOHANG) == process; }, longest))
            return -1;
        process = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t process = 0;
};

class PlayLive : public testing::Test {
protected:
    PlayLive() { unsetenv("SIMULATOR_MIDI_PORT"); }

    /** play as the host that lends the library: it needs no mount namespace, in which the test
        could not reach the process. */
    static Words playWords(const Words& more)
    {
        Words words{PLAY_PROGRAM,   "--binding", "service", "--library",
                    SIMULATOR_FILE, "--json",    "--live"};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }
    /** What the program printed. */
    std::string said() const { return ScratchFolder::read(output); }
    nlohmann::json report() const
    {
        const auto text = said();
        const auto begin = text.find('{');
        if (begin == std::string::npos)
            return {};
        return nlohmann::json::parse(text.substr(begin), nullptr, false);
    }
    std::string songOf(const MidiTrack& track) const
    {
        return folder.write("song.mid", midiFile(480, track));
    }
    static int endsOf(const std::vector<JackPeer::Message>& messages, uint8_t channel,
                      uint8_t pitch)
    {
        return static_cast<int>(
            std::count_if(messages.begin(), messages.end(), [&](const auto& message) {
                return message.bytes == Bytes{static_cast<uint8_t>(0x80 + channel), pitch, 0};
            }));
    }

    ScratchFolder folder;
    const std::string output = folder.file("out");
};

/** The samples of a stereo file, left and right in turn. */
std::vector<int16_t> samplesOf(const std::string& wavFile)
{
    constexpr size_t header = 44;
    const auto bytes = ScratchFolder::read(wavFile);
    std::vector<int16_t> samples;
    for (size_t at = header; at + 1 < bytes.size(); at += 2)
        samples.push_back(static_cast<int16_t>(static_cast<unsigned char>(bytes[at]) |
                                               static_cast<unsigned char>(bytes[at + 1]) << 8U));
    return samples;
}

TEST_F(PlayLive, LiveSoundsForTheSongsLengthOnASynthesizer)
{
    // Three seconds of notes without a pause.
    MidiTrack track;
    track.program(0, 0, 19); // an organ, which does not fade
    for (int beat = 0; beat < 6; ++beat)
        track.noteOn(0, 0, 60 + beat, 100).noteOff(480, 0, 60 + beat, 0);
    const auto song = songOf(track);
    const auto wav = folder.file("song.wav");
    RunningProgram program({WITH_SYNTHESIZER, "--private", "--record", wav, WITH_SIMULATOR,
                            PLAY_PROGRAM, song, "--live", "--json"},
                           output);
    ASSERT_EQ(program.wait(turnPatience), 0) << said();
    const auto json = report();
    EXPECT_EQ(json["notes"]["lost"], 0);
    EXPECT_EQ(json["port"]["notesLeft"], 12);
    EXPECT_EQ(json["port"]["lost"], 0);

    constexpr int audible = 300;
    constexpr double perSecond = 2 * 44100;
    const auto samples = samplesOf(wav);
    const auto isAudible = [](int16_t sample) { return std::abs(int{sample}) > audible; };
    const auto first = std::find_if(samples.begin(), samples.end(), isAudible);
    ASSERT_NE(first, samples.end()) << "silent";
    const auto last = std::find_if(samples.rbegin(), samples.rend(), isAudible).base();
    const auto seconds = static_cast<double>(last - first) / perSecond;
    EXPECT_GT(seconds, 2.9);
    EXPECT_LT(seconds, 4.) << "three seconds and the fading of the last note";
}

TEST_F(PlayLive, LiveSendsProgramsBeforeTheirNotesAndNothingElse)
{
    const JackServer server;
    JackPeer organ("organ");
    const auto song = songOf(MidiTrack()
                                 .program(0, 3, 19)
                                 .noteOn(0, 3, 60, 100)
                                 .noteOff(48, 3, 60, 0)
                                 .program(0, 3, 20)
                                 .noteOn(0, 3, 62, 100)
                                 .noteOff(48, 3, 62, 0));
    RunningProgram program(playWords({song, "--port", "organ"}), output);
    ASSERT_EQ(program.wait(), 0) << said();
    std::vector<Bytes> received;
    for (const auto& message : organ.received())
        received.push_back(message.bytes);
    // The instance that restores the state afterwards has no port, so it sends no values.
    EXPECT_THAT(received,
                testing::ElementsAre(Bytes{0xC3, 19}, Bytes{0x93, 60, 127}, Bytes{0xC3, 20},
                                     Bytes{0x83, 60, 0}, Bytes{0x93, 62, 127}, Bytes{0x83, 62, 0}));
    EXPECT_EQ(report()["port"]["copiedProgramChanges"], 2);
}

TEST_F(PlayLive, LiveShowsTimePartsAndEventsOnALineOfATerminal)
{
    const JackServer server;
    JackPeer organ("organ");
    const auto song = songOf(MidiTrack()
                                 .noteOn(0, 0, 60, 100)
                                 .noteOn(0, 9, 36, 100)
                                 .noteOff(960, 0, 60, 0)
                                 .noteOff(0, 9, 36, 0));
    std::string command;
    for (const auto& word : playWords({song, "--port", "organ"}))
        command += "'" + word + "' ";
    RunningProgram program(
        {"/usr/bin/script", "--quiet", "--return", "--command", command, "/dev/null"}, output);
    ASSERT_EQ(program.wait(), 0) << said();
    EXPECT_THAT(said(),
                testing::ContainsRegex("\r0:0[01] of 0:01, parts 1 10, [0-9]+ events? on "));
}

TEST_F(PlayLive, LiveEndsAllNotesOnCtrlC)
{
    const JackServer server;
    JackPeer organ("organ");
    const auto song = songOf(
        MidiTrack().noteOn(0, 0, 60, 100).noteOn(0, 9, 36, 100).noteOff(480 * 2 * 60, 0, 60, 0));
    RunningProgram program(playWords({song, "--port", "organ"}), output);
    ASSERT_TRUE(waitFor([&] { return organ.receivedCount() >= 2; })) << said();
    program.interrupt();
    ASSERT_EQ(program.wait(), 0) << said();
    const auto received = organ.received();
    EXPECT_EQ(endsOf(received, 0, 60), 1);
    EXPECT_EQ(endsOf(received, 9, 36), 1);
    const auto json = report();
    EXPECT_EQ(json["notes"]["sent"]["noteOffs"][0], 1);
    EXPECT_EQ(json["notes"]["sent"]["noteOffs"][9], 1);
    EXPECT_EQ(json["notes"]["lost"], 0);
}

TEST_F(PlayLive, LivePlaysWhatAKeyboardSends)
{
    const JackServer server;
    JackPeer organ("organ");
    JackPeer keys("keys");
    RunningProgram program(playWords({"--port", "organ", "--keyboard", "keys"}), output);
    ASSERT_TRUE(waitFor([&] { return !keys.ports("^play-keyboard-in:").empty(); })) << said();
    // Repeated, because what is sent before JACK has made the connection is lost.
    ASSERT_TRUE(waitFor([&] {
        keys.send({{0xFE}, {0x90, 50, 100}, {0x80, 50, 0}});
        return organ.receivedCount() > 0;
    })) << said();
    keys.send({{0x94, 60, 100}, {0x94, 64, 100}, {0x84, 60, 0}});
    const Bytes second{0x94, 64, 127};
    const auto hasSecond = [&] {
        const auto received = organ.received();
        return std::any_of(received.begin(), received.end(),
                           [&](const auto& message) { return message.bytes == second; });
    };
    ASSERT_TRUE(waitFor(hasSecond));
    ASSERT_TRUE(waitFor([&] { return endsOf(organ.received(), 4, 60) == 1; }));
    EXPECT_EQ(endsOf(organ.received(), 4, 64), 0) << "the key is down";
    program.interrupt();
    ASSERT_EQ(program.wait(), 0) << said();
    EXPECT_EQ(endsOf(organ.received(), 4, 64), 1);
    EXPECT_EQ(report()["notes"]["lost"], 0);
}

TEST_F(PlayLive, ConnectMidiMovesTheInstrumentToThatPort)
{
    const JackServer server;
    JackPeer harp("aharp");
    JackPeer organ("organ");
    const auto song = songOf(MidiTrack().noteOn(0, 0, 60, 100).noteOff(48, 0, 60, 0));
    RunningProgram program(
        playWords({song, "--port", "aharp", "--ports", "--connect-midi", "organ:in"}), output);
    ASSERT_EQ(program.wait(), 0) << said();
    EXPECT_EQ(report()["port"]["name"], "organ:in");
    EXPECT_EQ(endsOf(organ.received(), 0, 60), 1);
    EXPECT_EQ(endsOf(harp.received(), 0, 60), 0);
}

TEST_F(PlayLive, PortThatIsMissingEndsWithAMessage)
{
    setenv("JACK_DEFAULT_SERVER", "nobody-has-started-this", 1);
    const auto song = songOf(MidiTrack().noteOn(0, 0, 60, 100));
    RunningProgram program(playWords({song, "--port", "jack:organ"}), output);
    EXPECT_EQ(program.wait(), 1);
    EXPECT_THAT(said(), HasSubstr("play: The instrument has no MIDI port: "));
}

} // namespace
