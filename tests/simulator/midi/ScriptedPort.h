// ScriptedPort and RecordingReceiver: the two ends of a PortWire in a test.
#pragma once

#include "simulator/MidiWire.h"
#include "simulator/port/MidiDriver.h"

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

using MidiBytes = std::array<uint8, 3>;

/** A MIDI port that a test controls. Its driver holds it, since the wire's thread may use the
    driver after the test has ended. */
class ScriptedPort : public std::enable_shared_from_this<ScriptedPort> {
public:
    std::unique_ptr<MidiDriver> driver() { return std::make_unique<Driver>(shared_from_this()); }

    /** The messages that were sent to it, in order. */
    std::vector<MidiBytes> sent()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        return messages;
    }

    /** A message comes from the instrument. */
    void arrive(const MidiMessage& message)
    {
        const std::lock_guard<std::mutex> guard(mutex);
        if (arrival)
            arrival(message);
    }

    std::atomic<bool> isMissing{false};
    std::atomic<MidiDriver::State> seen{MidiDriver::State::there};
    std::atomic<bool> isStuck{false}; ///< send waits while it is set
    std::atomic<bool> isOpen{false};
    std::thread::id thread; ///< the one that opened it

private:
    class Driver final : public MidiDriver {
    public:
        explicit Driver(std::shared_ptr<ScriptedPort> newPort)
        : held(std::move(newPort))
        , port(*held)
        {
        }
        std::string open(const std::string& which, Arrival taker) override
        {
            if (port.isMissing)
                throw NoMidiPort("there is none called \"" + which + "\"");
            const std::lock_guard<std::mutex> guard(port.mutex);
            port.thread = std::this_thread::get_id();
            port.arrival = std::move(taker);
            port.isOpen = true;
            return "the port " + which;
        }
        bool send(const MidiMessage& message) override
        {
            while (port.isStuck)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            const std::lock_guard<std::mutex> guard(port.mutex);
            port.messages.push_back(message.bytes);
            return true;
        }
        MidiDriver::State look() override { return port.seen; }
        void close() override
        {
            const std::lock_guard<std::mutex> guard(port.mutex);
            port.arrival = nullptr;
            port.isOpen = false;
        }

    private:
        const std::shared_ptr<ScriptedPort> held;
        ScriptedPort& port;
    };

    std::mutex mutex;
    std::vector<MidiBytes> messages;
    MidiDriver::Arrival arrival;
};

/** Keeps what arrives. */
class RecordingReceiver final : public MidiReceiver {
public:
    void arrived(const MidiMessage& message) override
    {
        if (onArrival)
            onArrival();
        const std::lock_guard<std::mutex> guard(mutex);
        messages.push_back(message.bytes);
        threads.push_back(std::this_thread::get_id());
    }
    void instrumentIsBack() override { ++returns; }

    size_t count()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        return messages.size();
    }

    std::function<void()> onArrival; ///< called first, if set
    std::mutex mutex;
    std::vector<MidiBytes> messages;
    std::vector<std::thread::id> threads;
    std::atomic<int> returns{0};
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
