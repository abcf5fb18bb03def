// LongHost: a host for a long session. It counts and keeps no record, so that what grows is not
// its own.
#pragma once

#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "public.sdk/source/vst/hosting/module.h"

#include <cstdint>
#include <set>
#include <vector>

namespace endurance {

/** What the host hears of the user's edits. A gesture is begin, any values, end. [main thread] */
class EditCounter final : public Steinberg::Vst::IComponentHandler {
public:
    virtual ~EditCounter() = default;

    uint64_t begun = 0;
    uint64_t performed = 0;
    uint64_t ended = 0;
    uint64_t disordered = 0; ///< begun twice, or performed or ended without a begin
    size_t openGestures() const { return open.size(); }

    Steinberg::tresult PLUGIN_API beginEdit(Steinberg::Vst::ParamID id) override;
    Steinberg::tresult PLUGIN_API performEdit(Steinberg::Vst::ParamID id,
                                              Steinberg::Vst::ParamValue value) override;
    Steinberg::tresult PLUGIN_API endEdit(Steinberg::Vst::ParamID id) override;
    Steinberg::tresult PLUGIN_API restartComponent(Steinberg::int32 flags) override;

    // On its owner's stack or in it: references are not counted.
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID queried,
                                                 void** obj) override;
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }

private:
    std::set<Steinberg::Vst::ParamID> open;
};

/** Ticks when it is told to, and a fake Mac's run loop with it. */
class TimerLoop final : public Steinberg::Linux::IRunLoop {
public:
    virtual ~TimerLoop() = default;

    void tick();
    size_t getTimerCount() const;

    Steinberg::tresult PLUGIN_API registerEventHandler(Steinberg::Linux::IEventHandler*,
                                                       Steinberg::Linux::FileDescriptor) override;
    Steinberg::tresult PLUGIN_API unregisterEventHandler(Steinberg::Linux::IEventHandler*) override;
    Steinberg::tresult PLUGIN_API registerTimer(Steinberg::Linux::ITimerHandler* handler,
                                                Steinberg::Linux::TimerInterval interval) override;
    Steinberg::tresult PLUGIN_API
    unregisterTimer(Steinberg::Linux::ITimerHandler* handler) override;

    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID queried,
                                                 void** obj) override;
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }

private:
    std::vector<Steinberg::Linux::ITimerHandler*> timers;
};

/** The module and what every instance in it shares. Throws when the bundle cannot be loaded. */
class LongHost {
public:
    LongHost();
    ~LongHost();
    LongHost(const LongHost&) = delete;
    LongHost& operator=(const LongHost&) = delete;

    TimerLoop loop;
    Steinberg::Vst::HostApplication context;
    VST3::Hosting::Module::Ptr module;
};

} // namespace endurance
