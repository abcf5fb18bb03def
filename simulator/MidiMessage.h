// MidiMessage: one message between the library and the instrument.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <array>
#include <optional>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** A note-on, a note-off, a controller or a program change: the messages that the simulated
    instrument understands. */
struct MidiMessage {
    static constexpr uint8 noteOff = 0x80;
    static constexpr uint8 noteOn = 0x90;
    static constexpr uint8 controller = 0xB0;
    static constexpr uint8 program = 0xC0;

    std::array<uint8, 3> bytes{};
    uint8 size = 0; ///< 2 or 3

    /** Reads a message from bytes. Nothing for one of another kind or length, and for one with a
        data byte above 127. */
    static std::optional<MidiMessage> parse(const uint8* data, size_t length)
    {
        if (!data || length < 2)
            return {};
        const auto status = static_cast<uint8>(data[0] & 0xF0);
        const bool isLong = status == noteOff || status == noteOn || status == controller;
        if (length != (isLong ? 3U : 2U) || (!isLong && status != program))
            return {};
        MidiMessage message;
        message.bytes[0] = data[0];
        for (size_t index = 1; index < length; ++index) {
            if (data[index] > 127)
                return {};
            message.bytes[index] = data[index];
        }
        message.size = static_cast<uint8>(length);
        return message;
    }

    /** @param channel 0 to 15 @param number, value 0 to 127 */
    static MidiMessage controllerChange(int32 channel, uint8 number, int32 value)
    {
        return {{static_cast<uint8>(controller | channel), number, static_cast<uint8>(value)}, 3};
    }
    static MidiMessage programChange(int32 channel, int32 number)
    {
        return {{static_cast<uint8>(program | channel), static_cast<uint8>(number), 0}, 2};
    }
    static MidiMessage endOfNote(int32 channel, int32 pitch)
    {
        return {{static_cast<uint8>(noteOff | channel), static_cast<uint8>(pitch), 0}, 3};
    }

    uint8 kind() const { return bytes[0] & 0xF0; }
    int32 channel() const { return bytes[0] & 0x0F; }
    bool isNote() const { return kind() == noteOff || kind() == noteOn; }
    /** Whether it is a note-on with a velocity above 0: in MIDI velocity 0 ends the note. */
    bool startsNote() const { return kind() == noteOn && bytes[2] > 0; }
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
