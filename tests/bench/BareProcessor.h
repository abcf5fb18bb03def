// BareProcessor: what a processor's block has to do, and nothing besides.
#pragma once

#include "base/thread/include/flock.h"
#include "editorlib/VstIEditorConnect.h"
#include "pluginterfaces/vst/ivstevents.h"
#include "public.sdk/source/vst/vstaudioeffect.h"

#include <array>
#include <atomic>

namespace bench {

/** The floor of the lines about process: the calls that host and library must get, the tests before
    them, and one try of the lock for each event that leaves. It catches no exceptions. */
class BareProcessor final : public Steinberg::Vst::AudioEffect {
public:
    explicit BareProcessor(Steinberg::Vst::VstIEditorConnect& library)
    : editor(&library)
    {
    }

    Steinberg::tresult PLUGIN_API process(Steinberg::Vst::ProcessData& data) override;

    /** A note for the next block's output. */
    void writeNote(Steinberg::int16 pitch);

private:
    void sendQueuedEvents(Steinberg::Vst::IEventList& list);

    std::atomic<Steinberg::Vst::VstIEditorConnect*> editor;
    static constexpr size_t kCapacity = 100;
    std::array<Steinberg::Vst::Event, kCapacity> events = {};
    size_t first = 0;
    std::atomic<size_t> count{0};
    Steinberg::Base::Thread::FLock lock;
};

} // namespace bench
