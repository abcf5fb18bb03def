// HostHandlerDouble: the component handler that the host sets on the controller.
//
//   controller.setComponentHandler(&host.handler);
//   host.handler.editResult = kResultFalse;
//   host.handler.unpairedEdits() is empty after begin, perform, end in this order
//   trace: "host.beginEdit(37012000)", "host.performEdit(37012000, 0.5)", "host.endEdit(37012000)"
//          "host.restartComponent(8)"
#pragma once

#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "tests/doubles/HostPortsDouble.h"

namespace doubles {

/** Offers IComponentPortHandler beside IComponentHandler. [any thread] */
class HostHandlerDouble final : public Counted<Steinberg::Vst::IComponentHandler> {
public:
    HostHandlerDouble(HostBooks& host, HostPortsDouble& ports);

    Steinberg::tresult editResult = Steinberg::kResultOk;
    Steinberg::tresult restartResult = Steinberg::kResultOk;

    /** "37012000: perform without begin" and the like, and "37012000: begin without end". */
    std::vector<std::string> unpairedEdits() const;

    Steinberg::tresult PLUGIN_API beginEdit(Steinberg::Vst::ParamID id) override;
    Steinberg::tresult PLUGIN_API performEdit(Steinberg::Vst::ParamID id,
                                              Steinberg::Vst::ParamValue value) override;
    Steinberg::tresult PLUGIN_API endEdit(Steinberg::Vst::ParamID id) override;
    Steinberg::tresult PLUGIN_API restartComponent(Steinberg::int32 flags) override;

protected:
    void* face(const Steinberg::TUID queried) override;

private:
    void complain(Steinberg::Vst::ParamID id, const char* complaint);

    Steinberg::IComponentPortHandler& portHandler;
    mutable std::mutex mutex;
    std::set<Steinberg::Vst::ParamID> open;
    std::vector<std::string> complaints;
};

} // namespace doubles
