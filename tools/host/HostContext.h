// HostContext: what play hands a plug-in as its host.
#pragma once

#include "hostapi/IHostClasses.h"
#include "pluginterfaces/base/funknownimpl.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "tools/host/EditorService.h"
#include "tools/host/HostFamily.h"
#include "tools/host/RunLoop.h"

#include <functional>
#include <utility>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** The host's extension objects by interface ID. */
class HostClasses final : public U::Implements<U::Directly<IHostClasses>> {
public:
    /** Offers an object, which is kept, under its interface ID. */
    void offer(const TUID wanted, const IPtr<FUnknown>& object);

    /** Offers a new object of make's for each time that one is asked for. */
    void offerNew(const TUID wanted, std::function<IPtr<FUnknown>()> make);

    tresult PLUGIN_API getHostInterface(const TUID wanted, void** obj) override;

private:
    std::vector<std::pair<FUID, IPtr<FUnknown>>> objects;
    std::vector<std::pair<FUID, std::function<IPtr<FUnknown>()>>> makers;
};

/** Answers the SDK's host interfaces and, by family, those of the Cubase family. Each is an object
    of its own, so that a family can lack any of them.

    Not reference counted, as the SDK's own is not: it outlives every plug-in that holds it. */
class HostContext final : public HostApplication {
public:
    HostContext(const HostFamily& family, const IPtr<RunLoop>& runLoop);

    /** Offers the extension objects, the editor service among them. */
    void offerExtension(const IPtr<HostClasses>& hostClasses);

    tresult PLUGIN_API getName(String128 name) override;
    tresult PLUGIN_API queryInterface(const TUID wanted, void** obj) override;

private:
    void add(const FUID& offered, FUnknown* object);

    HostText name;
    std::vector<std::pair<FUID, IPtr<FUnknown>>> offers;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
