// BenchHost: play's host, whose service lends an editor library of this program.
#pragma once

#include "hostapi/IComponentFactory.h"
#include "tests/bench/LeanLibrary.h"
#include "tools/host/EditorService.h"
#include "tools/host/HostContext.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

namespace bench {

using Steinberg::FUnknown;
using Steinberg::tresult;
using Steinberg::Vst::ParamID;
using Steinberg::Vst::ParamValue;

namespace playhost = Steinberg::Vst::play;

/** A component handler that keeps no record, which would grow with what is measured. */
class EditSum final
: public Steinberg::U::Implements<Steinberg::U::Directly<Steinberg::Vst::IComponentHandler>> {
public:
    tresult PLUGIN_API beginEdit(ParamID) override { return Steinberg::kResultOk; }
    tresult PLUGIN_API performEdit(ParamID, ParamValue value) override
    {
        sum += value;
        return Steinberg::kResultOk;
    }
    tresult PLUGIN_API endEdit(ParamID) override { return Steinberg::kResultOk; }
    tresult PLUGIN_API restartComponent(int32) override { return Steinberg::kResultOk; }

    double sum = 0;
};

/** Has no run loop: ticks are asked for. */
class BenchHost {
public:
    /** @param unicode whether the host is one with Unicode, which tells its name */
    BenchHost(LeanLibrary& library, bool unicode, const std::string& version = "7.0.0")
    : BenchHost(unicode ? playhost::HostFamily::cubase(version) : playhost::HostFamily::plain())
    {
        const auto service = Steinberg::owned(
            new playhost::EditorService([&library] { return &library; }, libraryHandle()));
        add(Steinberg::IComponentFactory::iid,
            Steinberg::owned(new playhost::ServiceComponentFactory(service)));
    }
    /** A host with Unicode and without the service: the library is loaded from its file. */
    BenchHost()
    : BenchHost(playhost::HostFamily::cubase("7.0.0"))
    {
    }

    /** From now on getHostInterface gives this object. */
    void add(const Steinberg::FUID& id, const Steinberg::IPtr<FUnknown>& object)
    {
        classes->offer(id.toTUID(), object);
    }

    FUnknown* context() { return &hostContext; }

private:
    explicit BenchHost(const playhost::HostFamily& family)
    : hostContext(family, {})
    {
        hostContext.offerExtension(classes);
    }

    Steinberg::IPtr<playhost::HostClasses> classes = Steinberg::owned(new playhost::HostClasses);
    playhost::HostContext hostContext;
};

} // namespace bench
