#include "tests/hosts/juce/JuceHost.h"
#include "tests/hosts/HostsTable.h"
#include "tests/hosts/PartParameters.h"
#include "tests/tools/ScratchFolder.h"
#include "tools/common/LoadedSimulator.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <gmock/gmock.h>

namespace {

using namespace hosts;
using Steinberg::Vst::tools::findSimulator;
using Steinberg::Vst::tools::LibraryHandle;
using testing::ElementsAreArray;

constexpr unsigned kPan1 = 37013000;

class Juce : public testing::Test {
protected:
    JuceHost host;
};

TEST_F(Juce, ScanListsTheInstrument)
{
    tried(kJuceHost, "scan of the bundle");
    const auto found = host.scan();
    ASSERT_EQ(found.size(), 1);
    const auto& plugIn = *found[0];
    EXPECT_EQ(plugIn.name, "RDL3/RDL5 VST");
    EXPECT_EQ(plugIn.manufacturerName, "Tavrin Corporation");
    EXPECT_EQ(plugIn.category, "Instrument|External|OnlyRT|DSPBased");
    EXPECT_EQ(plugIn.version, "1.6.6");
    EXPECT_EQ(plugIn.pluginFormatName, "VST3");
    EXPECT_TRUE(plugIn.isInstrument);
    EXPECT_EQ(plugIn.numInputChannels, 0);
    EXPECT_EQ(plugIn.numOutputChannels, 4);
    // JUCE's hash of the class ID: each of its four words is added to 31 times the hash so far.
    unsigned unique = 0;
    for (const unsigned word : {0x13EEE348u, 0x4D664261u, 0xB90352CEu, 0x35DD18B4u})
        unique = unique * 31 + word;
    EXPECT_EQ(static_cast<unsigned>(plugIn.uniqueId), unique);
    EXPECT_FALSE(LibraryHandle::isLoaded()); // the scan ended what it made
    hosts::found("one instrument, right name, vendor, category, version and unique ID");
}

TEST_F(Juce, ListsParametersByPartWithTheirTexts)
{
    tried(kJuceHost, "parameters: titles, groups, value texts, which can be automated");
    const auto instance = host.create();
    ASSERT_TRUE(instance);
    const auto& parameters = instance->getParameters();
    ASSERT_EQ(parameters.size(), kParameters);
    for (int index = 0; index < kAutomatable; ++index) {
        const auto expected = expectedParameter(index);
        EXPECT_EQ(parameters[index]->getName(128), juce::String(expected.title));
        EXPECT_EQ(parameters[index]->getCurrentValueAsText(), juce::String(expected.text))
            << expected.title;
        EXPECT_TRUE(parameters[index]->isAutomatable()) << expected.title;
    }
    EXPECT_EQ(parameters[kAutomatable]->getName(128), "");
    EXPECT_FALSE(parameters[kAutomatable]->isAutomatable());
}

TEST_F(Juce, GroupsParametersByUnit)
{
    tried(kJuceHost, "units, which become groups of parameters; JUCE leaves out the empty one");
    const auto instance = host.create();
    ASSERT_TRUE(instance);
    std::vector<std::string> names;
    for (const auto* group : instance->getParameterTree().getSubgroups(true)) {
        names.push_back(group->getName().toStdString());
        EXPECT_EQ(group->getParameters(false).size(), doubles::kParametersOfAPart) << names.back();
    }
    std::vector<std::string> expected{"Part1 / Voice"};
    for (int part = 2; part <= 16; ++part)
        expected.push_back("Part" + std::to_string(part));
    EXPECT_THAT(names, ElementsAreArray(expected));
}

TEST_F(Juce, FindsNoPrograms)
{
    tried(kJuceHost, "programs");
    const auto instance = host.create();
    ASSERT_TRUE(instance);
    EXPECT_EQ(instance->getNumPrograms(), 0);
    EXPECT_EQ(instance->getCurrentProgram(), 0);
    hosts::found("passed: there are none");
}

TEST_F(Juce, ReadsValueTextsBack)
{
    tried(kJuceHost, "value texts typed in by the user");
    const auto instance = host.create();
    ASSERT_TRUE(instance);
    const auto& parameters = instance->getParameters();
    EXPECT_FLOAT_EQ(parameters[0]->getValueForText("127"), 1.f);
    EXPECT_FLOAT_EQ(parameters[1]->getValueForText("L63"), 1.f / 127);
    EXPECT_FLOAT_EQ(parameters[1]->getValueForText("R63"), 1.f);
    EXPECT_FLOAT_EQ(parameters[2]->getValueForText("-64"), 0.f);
    EXPECT_EQ(parameters[1]->getText(0.f, 128), "L64");
    EXPECT_EQ(parameters[2]->getText(0.5f, 128), "+0"); // 63.5 is rounded to 64
    EXPECT_EQ(parameters[10]->getText(1.f / 127, 128), "Arpeggio Hold");
}

/** A song's messages with their times in samples, and its notes and their ends by channel. */
struct Song {
    struct Message {
        juce::int64 sample;
        juce::MidiMessage midi;
    };
    std::vector<Message> messages;
    std::array<unsigned, 16> on{};
    std::array<unsigned, 16> off{};

    bool read(const juce::File& file)
    {
        juce::FileInputStream stream(file);
        juce::MidiFile midi;
        if (!stream.openedOk() || !midi.readFrom(stream))
            return false;
        midi.convertTimestampTicksToSeconds();
        juce::MidiMessageSequence all;
        for (int track = 0; track < midi.getNumTracks(); ++track)
            all.addSequence(*midi.getTrack(track), 0);
        for (const auto* event : all)
            add(event->message);
        return !messages.empty();
    }

private:
    void add(const juce::MidiMessage& midi)
    {
        if (midi.isMetaEvent())
            return;
        messages.push_back(
            {static_cast<juce::int64>(midi.getTimeStamp() * JuceHost::sampleRate), midi});
        const auto channel = static_cast<size_t>(midi.getChannel() - 1);
        if (midi.isNoteOn())
            ++on[channel];
        else if (midi.isNoteOff())
            ++off[channel];
    }
};

std::string noteText(const juce::MidiMessage& note)
{
    return std::to_string(note.getChannel()) + ":" + std::to_string(note.getNoteNumber()) +
           (note.isNoteOn() ? " on" : " off");
}

/** Plays a song block by block, as fast as possible. */
class Playback {
public:
    explicit Playback(juce::AudioPluginInstance& newInstance)
    : instance(newInstance)
    , audio(4, JuceHost::blockSize)
    {
    }

    std::vector<std::string> sent;     ///< notes, in order
    std::vector<std::string> returned; ///< what came out of "Midi Out"
    int wrongVelocities = 0;           ///< notes that came back neither as 127 nor as an end

    void play(const Song& song)
    {
        size_t next = 0;
        for (juce::int64 start = 0; next < song.messages.size(); start += JuceHost::blockSize) {
            juce::MidiBuffer midi;
            for (; next < song.messages.size() &&
                   song.messages[next].sample < start + JuceHost::blockSize;
                 ++next)
                add(midi, song.messages[next], start);
            instance.processBlock(audio, midi);
            collect(midi);
        }
    }

private:
    juce::AudioPluginInstance& instance;
    juce::AudioBuffer<float> audio;

    void add(juce::MidiBuffer& midi, const Song::Message& message, juce::int64 start)
    {
        midi.addEvent(message.midi, static_cast<int>(message.sample - start));
        if (message.midi.isNoteOnOrOff())
            sent.push_back(noteText(message.midi));
    }

    void collect(const juce::MidiBuffer& midi)
    {
        for (const auto& entry : midi) {
            const auto message = entry.getMessage();
            returned.push_back(noteText(message));
            if (message.isNoteOn() && message.getVelocity() != 127)
                ++wrongVelocities;
        }
    }
};

TEST_F(Juce, PlaysASong)
{
    tried(kJuceHost, "a whole song: every note reaches the library and comes back by \"Midi Out\"");
    Song song;
    ASSERT_TRUE(song.read(juce::File(SONG_FILE)))
        << "install the Debian package openttd-openmsx, which has " SONG_FILE;
    const auto instance = host.create();
    ASSERT_TRUE(instance);
    auto* simulator = findSimulator();
    ASSERT_TRUE(simulator);
    Playback playback(*instance);
    playback.play(song);
    for (int channel = 0; channel < 16; ++channel) {
        const auto index = static_cast<size_t>(channel);
        EXPECT_EQ(simulator->noteOnsReceived(channel), song.on[index]) << channel;
        EXPECT_EQ(simulator->noteOffsReceived(channel), song.off[index]) << channel;
    }
    EXPECT_GT(playback.sent.size(), 1000u);
    EXPECT_EQ(playback.returned, playback.sent);
    EXPECT_EQ(playback.wrongVelocities, 0);
    hosts::found(std::to_string(playback.sent.size()) + " note events each way, none lost");
}

TEST_F(Juce, AutomatesParameters)
{
    tried(kJuceHost, "automation of all parameters");
    const auto instance = host.create();
    ASSERT_TRUE(instance);
    auto* simulator = findSimulator();
    ASSERT_TRUE(simulator);
    const auto& parameters = instance->getParameters();
    for (int index = 0; index < kAutomatable; ++index)
        parameters[index]->setValue(static_cast<float>(index % 128) / 127);
    juce::AudioBuffer<float> audio(4, JuceHost::blockSize);
    juce::MidiBuffer midi;
    instance->processBlock(audio, midi);
    EXPECT_EQ(simulator->automationReceived(), uint64_t{kAutomatable});
    // The second parameter of part 1, and the eleventh of part 16.
    EXPECT_EQ(simulator->parameterValue(kPan1), 1);
    EXPECT_EQ(simulator->parameterValue(19001015), 220 % 128);
}

TEST_F(Juce, RestoresItsStateInANewInstance)
{
    tried(kJuceHost, "state saved, and restored in a new instance");
    juce::MemoryBlock saved;
    {
        const auto instance = host.create();
        ASSERT_TRUE(instance);
        auto* simulator = findSimulator();
        ASSERT_TRUE(simulator);
        simulator->turnKnob(kPan1, 17);
        simulator->turnKnob(19001015, 5);
        instance->getStateInformation(saved);
    }
    EXPECT_FALSE(LibraryHandle::isLoaded());
    const auto instance = host.create();
    ASSERT_TRUE(instance);
    auto* simulator = findSimulator();
    ASSERT_TRUE(simulator);
    EXPECT_EQ(simulator->parameterValue(kPan1), 64);
    instance->setStateInformation(saved.getData(), static_cast<int>(saved.getSize()));
    // With the next block a host could send parameter values of its own.
    juce::AudioBuffer<float> audio(4, JuceHost::blockSize);
    juce::MidiBuffer midi;
    instance->processBlock(audio, midi);
    EXPECT_EQ(simulator->parameterValue(kPan1), 17);
    EXPECT_EQ(simulator->parameterValue(19001015), 5);
    juce::MemoryBlock again;
    instance->getStateInformation(again);
    EXPECT_TRUE(again == saved);
}

TEST_F(Juce, CreatesAndDestroysFiftyInstances)
{
    tried(kJuceHost, "50 instances made, played and destroyed");
    const doubles::ScratchFolder folder;
    const auto report = folder.file("report");
    setenv("SIMULATOR_REPORT", report.c_str(), 1);
    for (int round = 0; round < 50; ++round) {
        const auto instance = host.create();
        ASSERT_TRUE(instance);
        juce::AudioBuffer<float> audio(4, JuceHost::blockSize);
        juce::MidiBuffer midi(juce::MidiMessage::noteOn(1, 60, 0.5f));
        instance->processBlock(audio, midi);
        ASSERT_EQ(midi.getNumEvents(), 1);
        ASSERT_EQ(findSimulator()->noteOnsReceived(0), 1u);
    }
    unsetenv("SIMULATOR_REPORT");
    EXPECT_FALSE(LibraryHandle::isLoaded());
    const auto lines = juce::StringArray::fromLines(doubles::ScratchFolder::read(report));
    for (const auto* line : {"begin 1", "note-ons 0 1", "end 1"})
        EXPECT_EQ(std::count(lines.begin(), lines.end(), juce::String(line)), 50) << line;
    // The scans before made no other instruments.
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](const auto& line) { return line.startsWith("begin"); }),
              50);
    hosts::found("passed: every instance ends, and the library is unloaded");
}

} // namespace
