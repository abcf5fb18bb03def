// The built simulator with its port module, at the ports of a JACK server.
#include "tests/live/JackPeer.h"
#include "tests/live/JackServer.h"
#include "tests/live/Patience.h"
#include "tests/simulator/LoadedSimulator.h"
#include "tests/simulator/ObserverTrace.h"

#include "editorlib/VstIEffectInterface.h"

#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <iostream>
#include <iterator>
#include <sys/wait.h>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using namespace live;
using testing::ElementsAre;
using testing::HasSubstr;
using Bytes = std::vector<uint8_t>;
using State = SimulatorControl::MidiPort::State;

constexpr uint32 volume3 = 37012002;

/** Keeps what the library writes, from any thread. */
class Effect : public VstIEffectInterface {
public:
    void writeMidi(const void* data, int length) override
    {
        const auto* first = static_cast<const uint8_t*>(data);
        const std::lock_guard<std::mutex> guard(mutex);
        messages.emplace_back(first, first + length);
    }
    std::vector<Bytes> written()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        return messages;
    }

private:
    std::mutex mutex;
    std::vector<Bytes> messages;
};

/** An instrument of the built library, with the port that a test asks for. */
class LiveInstrument : public testing::Test {
protected:
    ~LiveInstrument() override
    {
        end();
        if (server && HasFailure())
            std::cerr << server->messages();
    }

    void startServer() { server = std::make_unique<JackServer>(); }
    void begin(const std::string& port)
    {
        setenv("SIMULATOR_MIDI_PORT", port.c_str(), 1);
        library.connect(&editor);
        user = library.control(-1);
        ASSERT_TRUE(waitFor([&] { return user->midiPort().state != State::opening; }));
    }
    void end()
    {
        if (editor)
            editor->destroy();
        editor = nullptr;
    }
    void play(const Bytes& note)
    {
        editor->receiveHostMidi(note.data(), static_cast<int32>(note.size()));
    }
    static std::vector<Bytes> bytesOf(const std::vector<JackPeer::Message>& messages)
    {
        std::vector<Bytes> bytes;
        for (const auto& message : messages)
            bytes.push_back(message.bytes);
        return bytes;
    }
    static void expectReceived(JackPeer& peer, const std::vector<Bytes>& expected)
    {
        EXPECT_TRUE(waitFor([&] { return peer.receivedCount() >= expected.size(); }));
        EXPECT_EQ(bytesOf(peer.received()), expected);
    }
    /** The instrument has no port, and counts notes all the same. */
    void expectNoPort(const std::string& reason)
    {
        EXPECT_EQ(user->midiPort().state, State::none);
        EXPECT_THAT(user->midiPort().reason, HasSubstr(reason));
        play({0x92, 60, 127});
        EXPECT_EQ(user->noteOnsReceived(2), 1U);
        EXPECT_TRUE(waitFor([&] { return user->midiPort().lost == 1; }));
    }

    std::unique_ptr<JackServer> server; ///< outlives the instrument
    LoadedSimulator library;
    VstIEditorConnect* editor = nullptr;
    SimulatorControl* user = nullptr;
};

TEST_F(LiveInstrument, ReceiveHostMidiHostParameterChangedAndApplyPresetSendToThePort)
{
    startServer();
    JackPeer organ("Organ");
    begin("organ"); // in another case
    EXPECT_EQ(user->midiPort().name, "Organ:in");
    play({0x92, 60, 127});
    editor->hostParameterChanged(volume3, 23 / 127.);
    play({0x82, 60, 0});
    expectReceived(organ, {{0x92, 60, 127}, {0xB2, 7, 23}, {0x82, 60, 0}});

    organ.clear();
    editor->applyPreset(3, 2);
    ASSERT_TRUE(waitFor([&] { return organ.receivedCount() >= 3; }));
    const auto voice = bytesOf(organ.received());
    EXPECT_EQ(voice[0], (Bytes{0xB0, 0, 0}));
    EXPECT_EQ(voice[1], (Bytes{0xB0, 32, 3}));
    EXPECT_EQ(voice[2], (Bytes{0xC0, 2}));
}

TEST_F(LiveInstrument, ArrivedTakesNotesAndControllersAndIgnoresTheRest)
{
    startServer();
    JackPeer organ("organ");
    begin("jack:first");
    EXPECT_EQ(user->midiPort().name, "organ:in");
    Effect effect;
    editor->setEffectInterface(&effect);
    Trace trace;
    VstIObserver* observer = nullptr;
    library.observe(&observer, &trace, static_cast<int>(volume3), 0, 0, 0, traceValue,
                    VstIObserver::ParamModePart, traceBegin, traceEnd);
    editor->addObserver(observer);

    Bytes exclusive(100, 1);
    exclusive.front() = 0xF0;
    exclusive.back() = 0xF7;
    organ.send({{0xFE},
                exclusive,
                {0xF8},
                {0xE2, 0, 64},
                {0xB2, 1, 5},
                {0xB2, 7, 90},
                {0x92, 60, 100},
                {0x82, 60, 0}});
    ASSERT_TRUE(waitFor([&] { return effect.written().size() >= 2; }));
    EXPECT_THAT(effect.written(), ElementsAre(Bytes{0x92, 60, 100}, Bytes{0x82, 60, 0}));
    EXPECT_THAT(trace.texts(), ElementsAre("begin 37012002", "value 37012002 90", "end 37012002"));
    EXPECT_EQ(user->parameterValue(volume3), 90);
    EXPECT_EQ(organ.receivedCount(), 0U) << "sent back to where it came from";
    editor->setEffectInterface(nullptr);
    editor->removeObserver(observer);
    observer->destroy();
}

TEST_F(LiveInstrument, ReceiveHostMidiAndArrivedLoseNothingOfABurst)
{
    startServer();
    JackPeer organ("organ");
    begin("organ");
    Effect effect;
    editor->setEffectInterface(&effect);
    constexpr int burst = 10000;
    std::vector<Bytes> notes;
    for (int number = 0; number < burst; ++number)
        notes.push_back({static_cast<uint8_t>(0x90 + number % 16),
                         static_cast<uint8_t>(number / 128 % 128),
                         static_cast<uint8_t>(number % 127 + 1)});
    for (const auto& note : notes)
        play(note);
    organ.send(notes);
    expectReceived(organ, notes);
    ASSERT_TRUE(waitFor([&] { return effect.written().size() >= notes.size(); }))
        << effect.written().size();
    EXPECT_EQ(effect.written(), notes);
    EXPECT_EQ(user->midiPort().lost, 0U);
    editor->setEffectInterface(nullptr);
}

TEST_F(LiveInstrument, BeginWithOwnOffersPortsForOthersToConnectTo)
{
    startServer();
    JackPeer organ("organ");
    begin("own");
    const auto out = organ.ports("^RDL-simulator-out:");
    ASSERT_EQ(out.size(), 1U);
    ASSERT_TRUE(organ.connect(out[0], "organ:in"));
    // Repeated, because what is sent before JACK has made the connection is lost.
    EXPECT_TRUE(waitFor([&] {
        play({0x92, 60, 127});
        return organ.receivedCount() > 0;
    }));
    ASSERT_EQ(organ.ports("^RDL-simulator-in:").size(), 1U);
    ASSERT_TRUE(organ.connect("organ:out", organ.ports("^RDL-simulator-in:")[0]));
    EXPECT_TRUE(waitFor([&] {
        organ.send({{0xB2, 7, 90}});
        return user->parameterValue(volume3) == 90;
    }));
}

TEST_F(LiveInstrument, BeginWorksWithoutAPortThatIsMissingOrThatTheSystemRefuses)
{
    startServer();
    testing::internal::CaptureStderr();
    begin("harp");
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("simulator: no MIDI port, there is none called \"harp\"\n"));
    expectNoPort("there is none called \"harp\"");
    end();

    JackPeer organ("organ");
    auto* hog = jack_client_open("hog", JackNoStartServer, nullptr);
    ASSERT_TRUE(hog);
    int taken = 0;
    jack_set_error_function([](const char*) {});
    while (jack_port_register(hog, ("port-" + std::to_string(taken)).c_str(),
                              JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0))
        ++taken;
    jack_set_error_function(nullptr);
    ASSERT_GT(taken, 0);
    begin("organ");
    expectNoPort("\"organ:in\" cannot be opened");
    jack_client_close(hog);
}

TEST_F(LiveInstrument, LookFindsAnInstrumentThatIsBackAndSendsItsValues)
{
    startServer();
    auto organ = std::make_unique<JackPeer>("organ");
    begin("organ");
    organ.reset();
    ASSERT_TRUE(waitFor([&] { return user->midiPort().state == State::away; }));
    play({0x92, 60, 127});
    editor->hostParameterChanged(volume3, 23 / 127.);
    ASSERT_TRUE(waitFor([&] { return user->midiPort().lost == 2; }));

    organ = std::make_unique<JackPeer>("organ");
    ASSERT_TRUE(waitFor([&] { return user->midiPort().state == State::open; }));
    // The values of sixteen parts with nine controllers each, and no note.
    ASSERT_TRUE(waitFor([&] { return organ->receivedCount() >= 144; }));
    const auto values = bytesOf(organ->received());
    EXPECT_EQ(values.size(), 144U);
    EXPECT_THAT(values, testing::Contains(Bytes{0xB2, 7, 23}));
    EXPECT_THAT(values, testing::Each(testing::SizeIs(3)));
    EXPECT_THAT(values, testing::Not(testing::Contains(Bytes{0x92, 60, 127})));
    organ->send({{0xB2, 7, 90}});
    EXPECT_TRUE(waitFor([&] { return user->parameterValue(volume3) == 90; }));
}

TEST_F(LiveInstrument, DestroyReturnsAfterTheServerCrashed)
{
    startServer();
    begin("own");
    ASSERT_EQ(user->midiPort().state, State::open);
    play({0x92, 60, 127});
    server->kill();
    ASSERT_TRUE(waitFor([&] { return user->midiPort().state == State::none; }));
    EXPECT_THAT(user->midiPort().reason, HasSubstr("gone"));
    for (int round = 0; round < 5000; ++round) // more than RtMidi's queue holds
        play({0x92, 60, 127});
    EXPECT_EQ(user->noteOnsReceived(2), 5001U);
    // When a new client is opened JACK frees those of the lost server.
    jack_set_error_function([](const char*) {});
    EXPECT_FALSE(jack_client_open("another", JackNoStartServer, nullptr));
    jack_set_error_function(nullptr);
    const auto begin = std::chrono::steady_clock::now();
    end();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

TEST_F(LiveInstrument, ExitEndsEveryNoteOfAHostThatDoesNotDestroyIt)
{
    startServer();
    JackPeer organ("organ");
    setenv("SIMULATOR_MIDI_PORT", "organ", 1);
    const int status = std::system(ENDLESS_HOST);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    expectReceived(organ, {{0x92, 60, 127}, {0x82, 60, 0}, {0xB2, 123, 0}});
}

std::string loadedLibraries()
{
    std::ifstream maps("/proc/self/maps");
    return {std::istreambuf_iterator<char>(maps), std::istreambuf_iterator<char>()};
}

TEST_F(LiveInstrument, ConnectWireLoadsThePortsModuleOnlyWhenAPortIsAskedFor)
{
    unsetenv("SIMULATOR_MIDI_PORT");
    VstIEditorConnect* other = nullptr;
    library.connect(&other);
    EXPECT_EQ(library.control(-1)->midiPort().state, State::unused);
    EXPECT_THAT(loadedLibraries(), testing::Not(HasSubstr("simulator-midi-port")));
    other->destroy();

    setenv("JACK_DEFAULT_SERVER", "nobody-has-started-this", 1);
    setenv("JACK_NO_START_SERVER", "1", 1);
    begin("jack:organ");
    EXPECT_THAT(loadedLibraries(), HasSubstr("simulator-midi-port"));
    expectNoPort("JACK");
}

} // namespace
