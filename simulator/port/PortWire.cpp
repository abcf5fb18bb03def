#include "simulator/port/PortWire.h"

#include "public.sdk/source/vst/utility/ringbuffer.h"
#include "simulator/MidiMapping.h"
#include "simulator/NeverDestroyed.h"
#include "simulator/port/Wakeup.h"

#include <atomic>
#include <bitset>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <deque>
#include <mutex>
#include <set>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

using Clock = std::chrono::steady_clock;
using State = SimulatorControl::MidiPort::State;

constexpr int lookMilliseconds = 250; ///< how often the port is looked after
constexpr std::chrono::seconds closePatience{3};
constexpr int32 channels = 16;
constexpr int32 pitches = 128;

/** The open ports. */
struct OpenWires {
    std::mutex mutex;
    std::set<PortWire*> wires;
};

OpenWires& openWires()
{
    return neverDestroyed<OpenWires>();
}

void say(const std::string& text)
{
    std::fprintf(stderr, "simulator: %s\n", text.c_str());
}

} // namespace

/** What the threads share. */
class PortWire::Line {
public:
    explicit Line(std::string which)
    : wanted(std::move(which))
    {
    }

    bool queueFromAudioThread(const MidiMessage& message)
    {
        if (ending)
            return false;
        ++waiting; // before the message can be taken
        return admit(fromAudio.push(message), message);
    }

    bool queue(const MidiMessage& message)
    {
        if (ending)
            return false;
        ++waiting;
        bool hasRoom = false;
        {
            const std::lock_guard<std::mutex> guard(mutex);
            hasRoom = fromOthers.size() < capacity;
            if (hasRoom)
                fromOthers.push_back(message);
        }
        return admit(hasRoom, message);
    }

    /** The next message to send, which counts as waiting until sent. [sending thread] */
    bool take(MidiMessage& message)
    {
        {
            const std::lock_guard<std::mutex> guard(mutex);
            if (!fromOthers.empty()) {
                message = fromOthers.front();
                fromOthers.pop_front();
                return true;
            }
        }
        return fromAudio.pop(message);
    }

    void arrive(const MidiMessage& message)
    {
        ++(arrivals.push(message) ? arrived : lost);
        incoming.wake();
    }

    void choose(const std::string& which)
    {
        {
            const std::lock_guard<std::mutex> guard(mutex);
            wanted = which;
            isChosen = true;
        }
        outgoing.wake();
    }

    /** @return whether another port is chosen since the last call */
    bool takeChoice(std::string& which)
    {
        const std::lock_guard<std::mutex> guard(mutex);
        if (!std::exchange(isChosen, false))
            return false;
        which = wanted;
        state = State::opening;
        return true;
    }

    void setState(State newState, const std::string& newName, const std::string& newReason)
    {
        const std::lock_guard<std::mutex> guard(mutex);
        state = newState;
        name = newName;
        reason = newReason;
    }

    SimulatorControl::MidiPort status() const
    {
        SimulatorControl::MidiPort result;
        const std::lock_guard<std::mutex> guard(mutex);
        result.state = state;
        result.name = name;
        result.reason = reason;
        result.left = left;
        result.notesLeft = notesLeft;
        result.waiting = waiting;
        result.lost = lost;
        result.arrived = arrived;
        return result;
    }

    void setEnded()
    {
        {
            const std::lock_guard<std::mutex> guard(mutex);
            hasEnded = true;
        }
        end.notify_all();
    }
    /** @return false when the sending thread is still at work after the time */
    bool waitForEnd(std::chrono::seconds longest)
    {
        std::unique_lock<std::mutex> guard(mutex);
        return end.wait_for(guard, longest, [this] { return hasEnded; });
    }

    OneReaderOneWriter::RingBuffer<MidiMessage> fromAudio{capacity};
    OneReaderOneWriter::RingBuffer<MidiMessage> arrivals{capacity};
    Wakeup outgoing;
    Wakeup incoming;
    std::atomic<bool> ending{false};
    std::atomic<bool> isBack{false};       ///< the receiver is to be told
    std::atomic<bool> hasLostNotes{false}; ///< for want of room: some may sound for ever
    std::atomic<uint32> left{0};
    std::atomic<uint32> notesLeft{0};
    std::atomic<uint32> waiting{0};
    std::atomic<uint32> lost{0};
    std::atomic<uint32> arrived{0};

private:
    bool admit(bool hasRoom, const MidiMessage& message)
    {
        if (!hasRoom) {
            --waiting;
            ++lost;
            if (message.isNote())
                hasLostNotes = true;
        }
        outgoing.wake();
        return hasRoom;
    }

    mutable std::mutex mutex; ///< guards all below; not for the audio thread
    std::condition_variable end;
    std::deque<MidiMessage> fromOthers;
    std::string wanted;
    bool isChosen = true;
    bool hasEnded = false;
    State state = State::opening;
    std::string name;
    std::string reason;
};

/** The sending thread. */
class PortWire::Sender {
public:
    Sender(std::shared_ptr<Line> sharedLine, std::unique_ptr<MidiDriver> portDriver)
    : line(std::move(sharedLine))
    , driver(std::move(portDriver))
    {
    }

    void run()
    {
        while (true) {
            followChoice();
            sendAll();
            if (line->ending)
                break;
            line->outgoing.wait(lookMilliseconds);
            lookAfterPort();
        }
        leavePort();
        line->setEnded();
    }

private:
    void followChoice()
    {
        std::string which;
        if (!line->takeChoice(which))
            return;
        leavePort();
        const bool isFirst = std::exchange(isFirstChoice, false);
        if (which.empty())
            return line->setState(State::none, "", "none is chosen");
        try {
            name = driver->open(
                which, [shared = line](const MidiMessage& message) { shared->arrive(message); });
            state = State::open;
            line->setState(state, name, "");
            if (!isFirst)
                tellReturn();
        } catch (const std::exception& error) {
            say(std::string("no MIDI port, ") + error.what());
            line->setState(State::none, "", error.what());
        }
    }

    void sendAll()
    {
        MidiMessage message;
        while (line->take(message)) {
            send(message);
            --line->waiting;
        }
        if (line->hasLostNotes.exchange(false))
            for (int32 channel = 0; channel < channels; ++channel)
                pass(MidiMessage::controllerChange(channel, MidiMapping::allNotesOff, 0));
    }

    void send(const MidiMessage& message)
    {
        if (!pass(message)) {
            ++line->lost;
            return;
        }
        ++line->left;
        if (!message.isNote())
            return;
        ++line->notesLeft;
        const int32 note = message.channel() * pitches + message.bytes[1];
        sounding[static_cast<size_t>(note)] = message.startsNote();
    }

    bool pass(const MidiMessage& message) { return state == State::open && driver->send(message); }

    void lookAfterPort()
    {
        const auto now = Clock::now();
        if ((state != State::open && state != State::away) || now < nextLook)
            return;
        nextLook = now + std::chrono::milliseconds(lookMilliseconds);
        const auto seen = driver->look();
        if (seen == MidiDriver::State::gone)
            lose();
        else if (seen == MidiDriver::State::away && state == State::open)
            miss();
        else if (seen == MidiDriver::State::there && state == State::away)
            welcome();
    }

    void miss()
    {
        say("the MIDI port \"" + name + "\" is gone");
        state = State::away;
        line->setState(state, name, "it is gone");
    }

    void welcome()
    {
        say("the MIDI port \"" + name + "\" is back");
        state = State::open;
        endNotes(); // their note-offs may have been dropped meanwhile
        line->setState(state, name, "");
        tellReturn();
    }

    void lose()
    {
        say("the MIDI port \"" + name + "\" is gone with the system's MIDI service");
        state = State::none;
        sounding.reset();
        line->setState(state, name, "the system's MIDI service is gone");
        driver->close();
    }

    void tellReturn()
    {
        line->isBack = true;
        line->incoming.wake();
    }

    void leavePort()
    {
        if (state == State::unused)
            return;
        endNotes();
        if (state != State::none)
            driver->close();
        state = State::unused;
    }

    /** Ends what sounds by name, and then all, for an instrument that plays on by itself. */
    void endNotes()
    {
        std::bitset<channels> used;
        for (size_t note = 0; note < sounding.size(); ++note)
            if (sounding[note]) {
                const auto channel = static_cast<int32>(note) / pitches;
                used[static_cast<size_t>(channel)] = true;
                pass(MidiMessage::endOfNote(channel, static_cast<int32>(note) % pitches));
            }
        for (int32 channel = 0; channel < channels; ++channel)
            if (used[static_cast<size_t>(channel)])
                pass(MidiMessage::controllerChange(channel, MidiMapping::allNotesOff, 0));
        sounding.reset();
    }

    const std::shared_ptr<Line> line;
    const std::unique_ptr<MidiDriver> driver;
    State state = State::unused; ///< unused: the driver has no port
    std::string name;
    bool isFirstChoice = true; ///< all that was sent before still waits
    Clock::time_point nextLook = Clock::now();
    std::bitset<static_cast<size_t>(channels* pitches)> sounding;
};

/** The receiver's calls, which come from one thread. */
class PortWire::Calls {
public:
    template <typename Call>
    void make(Call&& call)
    {
        {
            const std::lock_guard<std::mutex> guard(mutex);
            caller = std::this_thread::get_id();
            ++begun;
        }
        std::forward<Call>(call)();
        {
            const std::lock_guard<std::mutex> guard(mutex);
            ++ended;
        }
        end.notify_all();
    }

    void wait()
    {
        std::unique_lock<std::mutex> guard(mutex);
        if (caller == std::this_thread::get_id())
            return;
        end.wait(guard, [this, last = begun] { return ended >= last; });
    }

private:
    std::mutex mutex;
    std::condition_variable end;
    std::thread::id caller;
    uint64 begun = 0;
    uint64 ended = 0;
};

PortWire::PortWire(std::unique_ptr<MidiDriver> driver, std::string which, MidiReceiver& ownEnd)
: line(std::make_shared<Line>(std::move(which)))
, calls(std::make_shared<Calls>())
{
    auto sender = std::make_shared<Sender>(line, std::move(driver));
    sending = std::thread([sender] { sender->run(); });
    receiving = std::thread([shared = line, made = calls, &ownEnd] {
        MidiMessage message;
        while (!shared->ending) {
            shared->incoming.wait(lookMilliseconds);
            if (!shared->ending && shared->isBack.exchange(false))
                made->make([&] { ownEnd.instrumentIsBack(); });
            while (!shared->ending && shared->arrivals.pop(message))
                made->make([&] { ownEnd.arrived(message); });
        }
    });
    auto& open = openWires();
    const std::lock_guard<std::mutex> guard(open.mutex);
    open.wires.insert(this);
}

PortWire::~PortWire()
{
    {
        auto& open = openWires();
        const std::lock_guard<std::mutex> guard(open.mutex);
        open.wires.erase(this);
    }
    close();
}

void PortWire::closeAll()
{
    auto& open = openWires();
    const std::lock_guard<std::mutex> guard(open.mutex);
    for (auto* wire : open.wires)
        wire->close();
}

bool PortWire::sendFromAudioThread(const MidiMessage& message)
{
    return line->queueFromAudioThread(message);
}

bool PortWire::send(const MidiMessage& message)
{
    return line->queue(message);
}

void PortWire::choosePort(const std::string& which)
{
    line->choose(which);
}

SimulatorControl::MidiPort PortWire::port() const
{
    return line->status();
}

void PortWire::waitForReceiver()
{
    calls->wait();
}

void PortWire::close()
{
    if (!sending.joinable())
        return;
    line->ending = true;
    line->incoming.wake();
    line->outgoing.wake();
    if (receiving.get_id() == std::this_thread::get_id())
        receiving.detach(); // it is in a call, and ends after it
    else
        receiving.join();
    if (line->waitForEnd(closePatience)) {
        sending.join();
    } else {
        sending.detach();
        say("the system does not let go of a MIDI port");
    }
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
