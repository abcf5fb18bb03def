#include "simulator/PortModule.h"

#include "basics/CallGuard.h"
#include "simulator/LoopWire.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

/** The wire of an instrument whose port could not be opened: drops everything. */
class OpenEndedWire final : public MidiWire {
public:
    explicit OpenEndedWire(std::string why)
    : reason(std::move(why))
    {
    }

    bool sendFromAudioThread(const MidiMessage& message) override { return send(message); }
    bool send(const MidiMessage&) override
    {
        ++lost;
        return true;
    }
    void choosePort(const std::string&) override {}
    SimulatorControl::MidiPort port() const override
    {
        SimulatorControl::MidiPort status;
        status.state = SimulatorControl::MidiPort::State::none;
        status.reason = reason;
        status.lost = lost;
        return status;
    }
    void waitForReceiver() override {}
    void close() override {}

private:
    const std::string reason;
    std::atomic<uint32> lost{0};
};

std::string folderOfThisLibrary()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&connectWire), &info) == 0 || !info.dli_fname)
        return {};
    const std::string file = info.dli_fname;
    return file.substr(0, file.rfind('/') + 1);
}

std::unique_ptr<MidiWire> withoutPort(const std::string& reason)
{
    std::fprintf(stderr, "simulator: no MIDI port, %s\n", reason.c_str());
    return std::make_unique<OpenEndedWire>(reason);
}

} // namespace

std::unique_ptr<MidiWire> connectWire(MidiReceiver& receiver)
{
    const char* which = std::getenv("SIMULATOR_MIDI_PORT");
    if (!which || !*which)
        return std::make_unique<LoopWire>(receiver);
    // Never unloaded (RTLD_NODELETE), because the system's MIDI libraries have threads of
    // their own.
    const auto file = folderOfThisLibrary() + SIMULATOR_PORT_MODULE;
    void* module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!module)
        return withoutPort(std::string("its part of this build does not load: ") + dlerror());
    const auto open = reinterpret_cast<OpenMidiPort>(dlsym(module, openMidiPortName));
    auto* wire =
        open ? guarded<MidiWire*>(nullptr, [&] { return open(which, receiver); }) : nullptr;
    dlclose(module);
    return wire ? std::unique_ptr<MidiWire>(wire) : withoutPort("its part of this build fails");
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
