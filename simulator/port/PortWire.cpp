#include "simulator/port/PortWire.h"

#include "simulator/NeverDestroyed.h"
#include "simulator/port/PortLine.h"
#include "simulator/port/PortSender.h"
#include "simulator/port/ReceiverCalls.h"

#include <chrono>
#include <cstdio>
#include <mutex>
#include <set>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

constexpr std::chrono::seconds closePatience{3};

/** The wires that exist. */
struct OpenWires {
    std::mutex mutex;
    std::set<PortWire*> wires;
};

OpenWires& openWires()
{
    return neverDestroyed<OpenWires>();
}

} // namespace

PortWire::PortWire(std::unique_ptr<MidiDriver> driver, std::string which, MidiReceiver& ownEnd)
: line(std::make_shared<PortLine>(std::move(which)))
, calls(std::make_shared<ReceiverCalls>())
{
    auto sender = std::make_shared<PortSender>(line, std::move(driver));
    sending = std::thread([sender] { sender->run(); });
    receiving = std::thread([shared = line, made = calls, &ownEnd] {
        MidiMessage message;
        while (!shared->ending) {
            shared->incoming.wait(PortLine::lookMilliseconds);
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
        receiving.detach(); // this is inside a call of the receiver; the thread ends after it
    else
        receiving.join();
    if (line->waitForEnd(closePatience)) {
        sending.join();
    } else {
        sending.detach();
        std::fputs("simulator: the system does not let go of a MIDI port\n", stderr);
    }
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
