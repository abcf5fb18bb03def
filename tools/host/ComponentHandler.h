// ComponentHandler: records what a plug-in's controller tells its host.
#pragma once

#include "hostapi/IComponentPortHandler.h"
#include "pluginterfaces/base/funknownimpl.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <mutex>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** Offers IComponentPortHandler too, when it has one.
    [any thread]: a plug-in may report an edit on the thread on which its user made it. */
class ComponentHandler final : public U::Implements<U::Directly<IComponentHandler>> {
public:
    enum class Kind { begin, perform, end };
    struct Edit {
        Kind kind;
        ParamID id;
        ParamValue value; ///< of perform; else 0
    };

    /** @param portHandler null for a host that has none */
    explicit ComponentHandler(const IPtr<IComponentPortHandler>& portHandler = {})
    : ports(portHandler)
    {
    }

    tresult PLUGIN_API queryInterface(const TUID wanted, void** obj) override;
    tresult PLUGIN_API beginEdit(ParamID id) override;
    tresult PLUGIN_API performEdit(ParamID id, ParamValue value) override;
    tresult PLUGIN_API endEdit(ParamID id) override;
    tresult PLUGIN_API restartComponent(int32 flags) override;

    /** Every edit so far, oldest first. */
    std::vector<Edit> edits() const;

    /** All flags of restartComponent so far. */
    int32 restartFlags() const;

private:
    tresult record(Kind kind, ParamID id, ParamValue value);

    IPtr<IComponentPortHandler> ports;
    mutable std::mutex mutex;
    std::vector<Edit> recorded;
    int32 restarts = 0;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
