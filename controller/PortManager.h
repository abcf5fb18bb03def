// PortManager: the controller's host ports. Lists them for the editor library, connects the chosen
// ones, hides what it takes from the host's own lists and shows it again when it lets go.
#pragma once

#include "editorlib/VSTiPorts.h"
#include "pluginterfaces/base/ftypes.h"

#include <atomic>
#include <string>
#include <vector>

namespace Steinberg {

class IHostPort;
class IPortRegistry;

namespace Vst {

struct HostAndLibrary;

/** Each operation is VstK2xController's operation of the same name; the library-facing ones are
    described at VstIControllerInterface, the host-facing ones at IExternalEffectUsingSKI.

    Host objects are asked for in each operation and let go at its end; one that is missing ends the
    operation, and nobody is told. No locks: [host main thread, or the library's; one at a time].
    The host may run its events inside any call, and an operation that comes of that runs at once
    with lists of its own, while the outer one goes on with those with which it began; the list that
    is stored last stands.
    Where nothing else is said an operation may throw std::bad_alloc or what the host throws; who
    calls it for the host or the library stops that. */
class PortManager {
public:
    /** @param hostAndLibrary outlives this object */
    explicit PortManager(const HostAndLibrary& hostAndLibrary)
    : outside(hostAndLibrary)
    {
    }
    PortManager(const PortManager&) = delete;
    PortManager& operator=(const PortManager&) = delete;

    /** The lists are this object's own, never null, and rebuilt by each call; one that ran out of
        memory is as long as it got. Neither throws. */
    std::vector<VSTiAudioPort::AudioPortInfo>* getAudioPortList() noexcept;
    std::vector<VSTiMidiPort::MidiOutPortInfo>* getMidiOutPortList() noexcept;

    /** @param ids four zero-terminated IDs, borrowed; each, or the array, may be null. Throws only
        before the first port is hidden. */
    void setAudioPortList(const char** ids);
    /** @param id zero-terminated, borrowed; null is no port's */
    void setMidiOutPort(const char* id);
    bool isConnectAudioPort() const { return !audioPortIdList.empty(); }
    // [any thread]
    bool isConnectAudioPortHost() const;
    bool isHostReadyForSetPort() const { return hostReadyForSetPort; }
    void setInitialStartFileLoad(bool state) { initialStartFileLoad = state; }

    /** Goes through all of its steps, whichever of them fails.
        @return whether a library is there; the host is then to ask for the latency anew */
    bool hostReadyForSetPortConnections() noexcept;

    /** Takes our MIDI ports whose system name contains text out of the host's all-MIDI-inputs set.
        @return 1 when nothing was removed, else the host's answer to the last removal */
    int32 allMidiInputRemove(const std::string& text);

    /** At the editor's first start, shows the audio inputs that the library picks. */
    void firstStartAudioportDisplayCompulsorily();

    /** Shows every held port again and forgets them; one that cannot be shown does not keep the
        others. Called by terminate.
        @param registry the host's, or null: the ports are then only forgotten */
    void releasePorts(IPortRegistry* registry) noexcept;

    /** False as soon as list holds id, true when it does not: inverted to its name, kept so. */
    static bool isExistAudioPortIdList(std::string id, const std::vector<std::string>& list);

private:
    using PortIds = std::vector<std::string>;

    void listAudioPorts(std::vector<VSTiAudioPort::AudioPortInfo>& list) const;
    void listMidiOutPorts(std::vector<VSTiMidiPort::MidiOutPortInfo>& list) const;
    static bool holds(const PortIds& list, const std::string& id);
    static IHostPort* takeAudioPort(IPortRegistry& registry, const char* id, bool isUnicode,
                                    const PortIds& held, PortIds& taken);
    bool isOurMidiPort(IHostPort& port, const std::string& text, bool isUnicode) const;

    const HostAndLibrary& outside;
    std::vector<VSTiAudioPort::AudioPortInfo> audioPortInfoList;
    std::vector<VSTiMidiPort::MidiOutPortInfo> midiOutPortInfoList;
    PortIds audioPortIdList; ///< IDs of the audio ports that we hold hidden
    std::atomic<bool> initialStartFileLoad{false};
    std::atomic<bool> hostReadyForSetPort{false};
};

} // namespace Vst
} // namespace Steinberg
