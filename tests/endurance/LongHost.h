// LongHost: play's host for a long session. It counts edits and keeps no record: memory that grows
// must be the plug-in's.
#pragma once

#include "tests/doubles/MacsCode.h"
#include "tools/common/PlugIn.h"
#include "tools/host/HostContext.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <cstdint>
#include <set>

namespace endurance {

using Steinberg::tresult;
using Steinberg::Vst::ParamID;
using Steinberg::Vst::ParamValue;
namespace playhost = Steinberg::Vst::play;

/** What the host hears of the user's edits. */
struct EditCounts {
    uint64_t begun = 0;
    uint64_t performed = 0;
    uint64_t ended = 0;
    uint64_t disordered = 0; ///< begun twice, or performed or ended without a begin
};

/** A gesture is begin, any values, end. [main thread] */
class EditCounter final
: public Steinberg::U::Implements<Steinberg::U::Directly<Steinberg::Vst::IComponentHandler>> {
public:
    EditCounts counts;
    size_t openGestures() const { return open.size(); }

    tresult PLUGIN_API beginEdit(ParamID id) override
    {
        return count(counts.begun, open.insert(id).second);
    }
    tresult PLUGIN_API performEdit(ParamID id, ParamValue) override
    {
        return count(counts.performed, open.count(id) > 0);
    }
    tresult PLUGIN_API endEdit(ParamID id) override
    {
        return count(counts.ended, open.erase(id) > 0);
    }
    tresult PLUGIN_API restartComponent(Steinberg::int32) override { return Steinberg::kResultOk; }

private:
    tresult count(uint64_t& number, bool inOrder)
    {
        ++number;
        counts.disordered += inOrder ? 0 : 1;
        return Steinberg::kResultOk;
    }

    std::set<ParamID> open;
};

/** The module and what every instance in it shares. Throws when the bundle cannot be loaded. */
struct LongHost {
    /** A timer's tick, also that of a fake Mac's run loop. */
    void tick()
    {
        loop->fireAll();
        if (const auto* mac = doubles::macSystem())
            mac->fireTimers();
    }
    size_t getTimerCount() const
    {
        const auto* mac = doubles::macSystem();
        return loop->timerCount() + (mac ? mac->timers() : 0);
    }

    Steinberg::IPtr<playhost::RunLoop> loop = Steinberg::owned(new playhost::RunLoop);
    playhost::HostContext context{playhost::HostFamily::plain(), loop};
    Steinberg::Vst::tools::PlugIn plugIn{BUNDLE_FOLDER, context};
};

} // namespace endurance
