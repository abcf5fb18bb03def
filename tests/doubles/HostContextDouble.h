// HostContextDouble: the host context of initialize(), the door to everything else of the host.
//
//   controller.initialize(&host.context);
//   host.hide(IHostClasses::iid);             // from now on the host has it no more
//   host.failAt("createInstance");            // no more messages
//   trace: "hostClasses.getHostInterface(IPortRegistry)", "hostApplicationW.getCharacterSet()"
#pragma once

#include "pluginterfaces/vst/ivsthostapplication.h"
#include "tests/doubles/HostDevicesDouble.h"
#include "tests/doubles/HostPortsDouble.h"
#include "tests/doubles/HostRunLoopDouble.h"
#include "tests/doubles/HostServiceDouble.h"
#include "tools/host/HostFamily.h"

namespace doubles {

using Steinberg::Vst::play::HostFamily;

/** What IHostClasses hands out. */
struct HostParts {
    HostUpdatesDouble& updates;
    HostDevicesDouble& devices;
    HostPortsDouble& ports;
    HostServiceDouble& service;
    HostRunLoopDouble& runLoop;
};

/** Offers IHostApplication, IHostApplicationW, IHostApplicationA, IHostClasses and the run loop,
    each unless hidden. */
class HostContextDouble final : public Counted<Steinberg::Vst::IHostApplication> {
public:
    HostContextDouble(HostBooks& host, const HostFamily& family, const HostParts& parts);

    // The host's answers; texts stay what they are while the plug-in may hold them.
    HostText name;
    HostText versionText;
    Steinberg::tresult characterSet; ///< 0 for a Unicode host

    Steinberg::tresult PLUGIN_API getName(Steinberg::Vst::String128 name) override;
    Steinberg::tresult PLUGIN_API createInstance(Steinberg::TUID cid, Steinberg::TUID queried,
                                                 void** obj) override;

protected:
    void* face(const Steinberg::TUID queried) override;

private:
    class ApplicationW;
    class ApplicationA;
    class Classes;

    HostParts parts;
    ApplicationW& applicationW;
    ApplicationA& applicationA;
    Classes& classes;
    int messagesMade = 0;
};

} // namespace doubles
