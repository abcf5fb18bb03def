// HostValueDouble: one observable value of a device. Made by HostDeviceDouble::value().
//
//   auto& channel = track.value("channel");    channel.integer = 3;
//   track.value("output").text = "MIDI 1 - RDL3/RDL5 VST";
//   trace: "value(Piano.channel).getInteger()", "value(Mixer.selected).setInteger(2, true)"
#pragma once

#include "hostapi/IValue.h"
#include "tests/doubles/HostUpdatesDouble.h"

namespace doubles {

class HostValueDouble final : public Counted<Steinberg::IValue> {
public:
    HostValueDouble(HostBooks& host, const std::string& name, HostUpdatesDouble& notices);

    std::atomic<Steinberg::int32> integer{0};
    HostText text;
    bool terminates = true; ///< false: a text as long as the buffer fills it without a terminator

    Steinberg::int32 PLUGIN_API getInteger() override;

    /** Writes as much of the text as fits and sets size to the units of it. */
    void PLUGIN_API getString(Steinberg::char16* buffer, Steinberg::int32* size) override;

    /** With notify the dependents are told (HostUpdatesDouble::tell), also of an equal value. */
    void PLUGIN_API setInteger(Steinberg::int32 value, bool notify) override;

protected:
    void* face(const Steinberg::TUID queried) override;

private:
    HostUpdatesDouble& updates;
};

} // namespace doubles
