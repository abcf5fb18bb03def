// HostContextDouble: the host context of initialize(), which gives the host's other objects.
//
//   controller.initialize(&host.context);
//   host.hide(IHostClasses::iid);             // not offered any more
//   host.failAt("createInstance");            // no more messages
//   trace: "hostClasses.getHostInterface(IPortRegistry)", "hostApplicationW.getCharacterSet()"
#pragma once

#include "pluginterfaces/vst/ivsthostapplication.h"
#include "tests/doubles/HostRunLoopDouble.h"
#include "tools/host/HostFamily.h"

namespace doubles {

using Steinberg::Vst::play::HostFamily;

/** Offers IHostApplication, IHostApplicationW, IHostApplicationA, IHostClasses and the run loop,
    each unless hidden. */
class HostContextDouble final : public Counted<Steinberg::Vst::IHostApplication> {
public:
    HostContextDouble(HostBooks& host, const HostFamily& family, HostRunLoopDouble& runLoop);

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

    HostRunLoopDouble& runLoop;
    ApplicationW& applicationW;
    ApplicationA& applicationA;
    Classes& classes;
    int messagesMade = 0;
};

} // namespace doubles
