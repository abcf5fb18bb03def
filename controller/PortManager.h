// PortManager: lists the host's ports for the editor library and connects those that it chooses. A
// connected audio port is hidden in the host's own lists, and shown again when it is released.
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

/** Does the work of VstK2xController's operations of the same names. Those for the library are
    described at VstIControllerInterface, those for the host at IExternalEffectUsingSKI.

    Each operation gets the host's objects anew and releases them at its end. When one is
    missing the operation ends without an error. No locks: [host main thread, or the library's;
    one at a time].

    The host may run its event loop inside any call, and so start another operation inside this one.
    The inner operation uses lists of its own, the outer one goes on with those that it began with,
    and the list that is stored last remains.

    Where nothing else is said, an operation may throw std::bad_alloc and what the host throws; the
    controller catches it. */
class PortManager {
public:
    /** @param hostAndLibrary must outlive this object */
    explicit PortManager(const HostAndLibrary& hostAndLibrary)
    : outside(hostAndLibrary)
    {
    }
    PortManager(const PortManager&) = delete;
    PortManager& operator=(const PortManager&) = delete;

    /** The lists are owned by this object, never null, and rebuilt by each call. When memory runs
        out they end early. */
    std::vector<VSTiAudioPort::AudioPortInfo>* getAudioPortList() noexcept;
    std::vector<VSTiMidiPort::MidiOutPortInfo>* getMidiOutPortList() noexcept;

    /** @param ids four zero-terminated IDs, borrowed; each of them, and ids itself, may be null.
        Throws only before it has hidden a port. */
    void setAudioPortList(const char** ids);
    /** @param id zero-terminated, borrowed; null or unknown: disconnects the MIDI output */
    void setMidiOutPort(const char* id);
    bool isConnectAudioPort() const { return !audioPortIdList.empty(); }
    // [any thread]
    bool isConnectAudioPortHost() const;
    bool isHostReadyForSetPort() const { return hostReadyForSetPort; }
    void setInitialStartFileLoad(bool state) { initialStartFileLoad = state; }

    /** Goes through all of its steps even when one fails.
        @return whether a library is bound; the caller then tells the host that the
        latency changed */
    bool hostReadyForSetPortConnections() noexcept;

    /** Removes the instrument's MIDI ports whose system name contains text from the host's "all
        MIDI inputs". @return 1 when there was none, else the host's result of the last removal */
    int32 allMidiInputRemove(const std::string& text);

    /** At the editor's first start, shows the audio inputs that the library chooses. */
    void firstStartAudioportDisplayCompulsorily();

    /** Shows every port that was hidden, and forgets them. When one cannot be shown, the others
        still are. Called by terminate.
        @param registry the host's; null: the ports are only forgotten */
    void releasePorts(IPortRegistry* registry) noexcept;

    /** True when list does NOT contain id: the opposite of its name. */
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
    PortIds audioPortIdList; ///< IDs of the audio ports that are connected and hidden
    std::atomic<bool> initialStartFileLoad{false};
    std::atomic<bool> hostReadyForSetPort{false};
};

} // namespace Vst
} // namespace Steinberg
