#include "simulator/port/RtMidiDriver.h"

#include "simulator/port/ServerWatch.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <RtMidi.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

using Clock = std::chrono::steady_clock;

/** Limits the rate of sending. RtMidi's queue to JACK holds 2,340 short messages, and while it is
    full the sender waits in a busy loop. This rate does not fill it in JACK's longest period, 186
    ms at 44.1 kHz. */
class Pace {
public:
    void keep()
    {
        refill();
        while (tokens < 1) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            refill();
        }
        --tokens;
    }

private:
    void refill()
    {
        const auto now = Clock::now();
        const std::chrono::duration<double, std::milli> passed = now - last;
        last = now;
        tokens = std::min(burst, tokens + passed.count() * perMillisecond);
    }

    static constexpr double burst = 512;
    static constexpr double perMillisecond = 8;
    double tokens = burst;
    Clock::time_point last = Clock::now();
};

struct Wish {
    std::string api; ///< RtMidi's name for it; empty for any
    std::string port;
};

Wish wishIn(const std::string& which)
{
    for (const std::string api : {"alsa", "jack", "core"})
        if (which.compare(0, api.size() + 1, api + ":") == 0)
            return {api, which.substr(api.size() + 1)};
    return {"", which};
}

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

std::vector<std::string> namesOf(RtMidi& end)
{
    std::vector<std::string> names;
    const unsigned count = end.getPortCount();
    for (unsigned number = 0; number < count; ++number)
        names.push_back(end.getPortName(number));
    return names;
}

/** The device in "device:port". */
std::string deviceOf(const std::string& name)
{
    return name.substr(0, name.find(':'));
}

bool isMidiThrough(const std::string& name)
{
    return name.find("Midi Through") != std::string::npos;
}

/** Which MIDI service of the system is used, and whether it is still there. */
class Service {
public:
    /** @param wanted RtMidi's name for it; empty for any @throws NoMidiPort */
    explicit Service(const std::string& wanted)
    {
        std::vector<RtMidi::Api> all;
        RtMidi::getCompiledApi(all);
        for (const auto candidate : all)
            if ((wanted.empty() || RtMidi::getApiName(candidate) == wanted) &&
                isUsable(candidate)) {
                chosen = candidate;
                return;
            }
        throw NoMidiPort("neither ALSA's sequencer nor a JACK server is there to offer one");
    }

    RtMidi::Api api() const { return chosen; }
    bool isGone() const { return watch.isGone(); }
    /** Waits until JACK has made a connection and played what was sent: messages that are
        sent before the connection is made, or in the period in which the port is closed,
        would be lost. */
    void settle() const { watch.settle(); }

private:
    // Tested before RtMidi tries it, because RtMidi and its libraries print errors on the console.
    bool isUsable(RtMidi::Api candidate)
    {
        switch (candidate) {
        case RtMidi::LINUX_ALSA:
            return access("/dev/snd/seq", R_OK | W_OK) == 0;
        case RtMidi::UNIX_JACK:
            return watch.open();
        case RtMidi::RTMIDI_DUMMY:
            return false;
        default:
            return true;
        }
    }

    ServerWatch watch;
    RtMidi::Api chosen = RtMidi::UNSPECIFIED;
};

/** One direction of a port, and the last error that RtMidi reported for it. */
template <typename End>
class Half {
public:
    template <typename... Arguments>
    explicit Half(Arguments&&... arguments)
    : end(std::forward<Arguments>(arguments)...)
    {
        end.setErrorCallback(&Half::note, this);
    }

    /** Connects to the port of this name. @throws NoMidiPort @return false if there is none */
    bool connect(const std::string& name)
    {
        const auto names = namesOf(end);
        const auto found = std::find(names.begin(), names.end(), name);
        if (found == names.end())
            return false;
        end.openPort(static_cast<unsigned>(found - names.begin()), ownName);
        throwComplaint("\"" + name + "\" cannot be opened, it may be in use");
        other = name;
        return true;
    }

    void offer()
    {
        end.openVirtualPort(ownName);
        throwComplaint("the system does not let a new port in");
    }

    /** Connects again to a port that is back. @return whether the port is there; true when this
        half is connected to none */
    bool look()
    {
        if (other.empty())
            return true;
        const auto names = namesOf(end);
        const bool isThere = std::find(names.begin(), names.end(), other) != names.end();
        if (isThere && !isConnected)
            isConnected = connectAgain();
        else
            isConnected = isThere;
        return isConnected;
    }

    /** @return whether RtMidi reported an error since the last call */
    bool complained() { return !std::exchange(complaint, {}).empty(); }

    End end;
    const std::string ownName = std::is_same_v<End, RtMidiIn> ? "in" : "out";

private:
    bool connectAgain()
    {
        end.closePort();
        try {
            return connect(other);
        } catch (const NoMidiPort&) {
            return false;
        }
    }

    static void note(RtMidiError::Type type, const std::string& text, void* half)
    {
        if (type != RtMidiError::WARNING && type != RtMidiError::DEBUG_WARNING)
            static_cast<Half*>(half)->complaint = text;
    }

    void throwComplaint(const std::string& what)
    {
        if (!complaint.empty())
            throw NoMidiPort(what + " (" + std::exchange(complaint, {}) + ")");
    }

    std::string complaint;
    std::string other; ///< empty: others connect to this half
    bool isConnected = true;
};

class RtMidiDriver final : public MidiDriver {
public:
    RtMidiDriver(std::string newProgram, Directions newDirections)
    : program(std::move(newProgram))
    , directions(newDirections)
    {
    }
    ~RtMidiDriver() override { RtMidiDriver::close(); }

    std::string open(const std::string& which, Arrival newArrival) override
    {
        const auto wish = wishIn(which);
        arrival = std::move(newArrival);
        try {
            service = std::make_unique<Service>(wish.api);
            if (directions == Directions::both)
                out = std::make_unique<Half<RtMidiOut>>(service->api(), program + "-out");
            in = std::make_unique<Half<RtMidiIn>>(service->api(), program + "-in");
            in->end.setCallback(&RtMidiDriver::take, this);
            auto name = wish.port == "own" ? openOwn() : openOther(wish.port);
            service->settle();
            return name;
        } catch (const RtMidiError& error) {
            close();
            throw NoMidiPort(error.what());
        } catch (const NoMidiPort&) {
            close();
            throw;
        }
    }

    bool send(const MidiMessage& message) override
    {
        if (!out || service->isGone())
            return false;
        pace.keep();
        out->end.sendMessage(message.bytes.data(), message.size);
        return !out->complained();
    }

    State look() override
    {
        if (service->isGone())
            return State::gone;
        const bool isOutThere = !out || out->look();
        const bool isThere = in->look() && isOutThere;
        if (isThere && !wasThere)
            service->settle();
        wasThere = isThere;
        return isThere ? State::there : State::away;
    }

    void close() override
    {
        if (service && service->isGone())
            abandon();
        else if (service)
            service->settle();
        out.reset();
        in.reset();
        service.reset();
    }

private:
    std::string openOwn()
    {
        if (out)
            out->offer();
        in->offer();
        return program;
    }

    std::string openOther(const std::string& wanted)
    {
        auto source = findPort(in->end, wanted);
        const auto destination = out ? findPort(out->end, wanted) : "";
        if (wanted == "first" && !destination.empty())
            source = findPort(in->end, deviceOf(destination));
        if (source.empty() && destination.empty())
            throw NoMidiPort(wanted == "first" ? "nobody offers one"
                                               : "there is none called \"" + wanted + "\"");
        if (out)
            openHalf(*out, destination);
        openHalf(*in, source);
        return destination.empty() ? source : destination;
    }

    template <typename End>
    static void openHalf(Half<End>& half, const std::string& name)
    {
        if (name.empty() || !half.connect(name))
            half.offer();
    }

    /** The first port of another program that fits; empty if there is none. */
    std::string findPort(RtMidi& end, const std::string& wanted) const
    {
        for (const auto& name : namesOf(end)) {
            const bool isOwn = name.compare(0, program.size(), program) == 0;
            const bool fits = wanted == "first"
                                  ? !isMidiThrough(name)
                                  : lowerCase(name).find(lowerCase(wanted)) != std::string::npos;
            if (fits && !isOwn)
                return name;
        }
        return {};
    }

    static void take(double, std::vector<unsigned char>* bytes, void* driver)
    {
        if (const auto message = MidiMessage::parse(bytes->data(), bytes->size()))
            static_cast<RtMidiDriver*>(driver)->arrival(*message);
    }

    /** Never closes the clients of a server that is gone: JACK frees them itself when a new server
        is opened, and crashes if they are closed after that. */
    void abandon()
    {
        static auto* const abandoned = new std::vector<std::shared_ptr<void>>;
        abandoned->push_back(std::shared_ptr<void>(std::move(out)));
        abandoned->push_back(std::shared_ptr<void>(std::move(in)));
    }

    const std::string program;
    const Directions directions;
    Arrival arrival;
    Pace pace;
    bool wasThere = true;
    std::unique_ptr<Service> service;
    std::unique_ptr<Half<RtMidiOut>> out;
    std::unique_ptr<Half<RtMidiIn>> in;
};

} // namespace

std::unique_ptr<MidiDriver> makeRtMidiDriver(const std::string& program, Directions directions)
{
    return std::make_unique<RtMidiDriver>(program, directions);
}

std::vector<SystemMidiPort> systemMidiPorts()
{
    const Service service("");
    std::vector<SystemMidiPort> ports;
    RtMidiOut out(service.api(), "midi-list");
    for (const auto& name : namesOf(out))
        if (!isMidiThrough(name))
            ports.push_back({name, true});
    RtMidiIn in(service.api(), "midi-list");
    for (const auto& name : namesOf(in))
        if (!isMidiThrough(name))
            ports.push_back({name, false});
    return ports;
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
