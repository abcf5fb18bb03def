#include "simulator/port/PortLine.h"

#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

PortLine::PortLine(std::string which)
: wanted(std::move(which))
{
}

bool PortLine::queueFromAudioThread(const MidiMessage& message)
{
    if (ending)
        return false;
    ++waiting; // first, since the sender may take the message at once
    return admit(fromAudio.push(message), message);
}

bool PortLine::queue(const MidiMessage& message)
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

bool PortLine::take(MidiMessage& message)
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

void PortLine::arrive(const MidiMessage& message)
{
    ++(arrivals.push(message) ? arrived : lost);
    incoming.wake();
}

void PortLine::choose(const std::string& which)
{
    {
        const std::lock_guard<std::mutex> guard(mutex);
        wanted = which;
        isChosen = true;
    }
    outgoing.wake();
}

bool PortLine::takeChoice(std::string& which)
{
    const std::lock_guard<std::mutex> guard(mutex);
    if (!std::exchange(isChosen, false))
        return false;
    which = wanted;
    state = State::opening;
    return true;
}

void PortLine::setState(State newState, const std::string& newName, const std::string& newReason)
{
    const std::lock_guard<std::mutex> guard(mutex);
    state = newState;
    name = newName;
    reason = newReason;
}

SimulatorControl::MidiPort PortLine::status() const
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

void PortLine::setEnded()
{
    {
        const std::lock_guard<std::mutex> guard(mutex);
        hasEnded = true;
    }
    end.notify_all();
}

bool PortLine::waitForEnd(std::chrono::seconds longest)
{
    std::unique_lock<std::mutex> guard(mutex);
    return end.wait_for(guard, longest, [this] { return hasEnded; });
}

bool PortLine::admit(bool hasRoom, const MidiMessage& message)
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

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
