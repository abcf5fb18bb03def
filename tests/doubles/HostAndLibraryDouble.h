// HostAndLibraryDouble: a scripted host and a scripted library for tests of ports and routing
// without a controller. A dependent of its own hears of the host's changes in its place.
//
//   HostAndLibraryDouble outside(host, &library);        // or nullptr: unbound
//   TrackRouting routing(outside, outside.dependent);    // the object under test, alone
//   outside.onUpdate = [&](FUnknown* object, int32 message) { routing.update(object, message); };
//   trace: "controller.update(device(Mixer), 1)"
#pragma once

#include "controller/HostAndLibrary.h"
#include "tests/doubles/ScriptedHost.h"
#include "tests/doubles/ScriptedLibrary.h"

namespace doubles {

class HostAndLibraryDouble final : public Steinberg::Vst::HostAndLibrary {
public:
    HostAndLibraryDouble(ScriptedHost& scriptedHost, ScriptedLibrary* scriptedLibrary);
    ~HostAndLibraryDouble();
    HostAndLibraryDouble(const HostAndLibraryDouble&) = delete;
    HostAndLibraryDouble& operator=(const HostAndLibraryDouble&) = delete;

    void bind(Steinberg::Vst::VstIEditorConnect* connection)
    {
        library.setPluginInfo(connection, nullptr);
    }

    /** Gives the host's objects back, so that the ledger shows what the object under test holds. */
    void release();

private:
    class Dependent;
    Dependent& ownDependent;

public:
    Steinberg::IDependent& dependent;
    std::function<void(Steinberg::FUnknown*, Steinberg::int32)> onUpdate;
};

} // namespace doubles
