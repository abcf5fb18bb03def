#include "simulator/MidiMessage.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using Steinberg::uint8;
using Steinberg::Vst::simulator::MidiMessage;

struct Bytes {
    std::vector<uint8> bytes;
    bool isUnderstood;
};

const std::vector<Bytes> understood{
    {{0x90, 0, 127}, true},      // note-on
    {{0x9F, 127, 0}, true},      // note-on that ends the note
    {{0x85, 60, 64}, true},      // note-off
    {{0xB3, 7, 100}, true},      // controller
    {{0xC9, 127}, true},         // program change
    {{0xA0, 60, 1}, false},      // key pressure
    {{0xD0, 60}, false},         // channel pressure
    {{0xE0, 0, 64}, false},      // pitch bend
    {{0xFE}, false},             // active sensing
    {{0xF8}, false},             // clock
    {{0xFF}, false},             // reset
    {{0xF2, 1, 2}, false},       // song position
    {{0xF0, 0x7E, 0xF7}, false}, // exclusive
    {{0xF0, 1, 2, 3, 0xF7}, false},
    {{60, 100}, false},  // running status
    {{0x90, 60}, false}, // incomplete
    {{0xC0}, false},
    {{}, false},
    {{0x90, 60, 100, 0}, false}, // too long
    {{0xC0, 1, 2}, false},
    {{0x90, 128, 100}, false}, // not a data byte
    {{0xB0, 7, 255}, false},
    {{0xC0, 200}, false},
};

TEST(MidiMessage, ParseReadsWhatTheInstrumentUnderstands)
{
    EXPECT_FALSE(MidiMessage::parse(nullptr, 3));
    for (const auto& [bytes, isUnderstood] : understood) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        const auto message = MidiMessage::parse(bytes.data(), bytes.size());
        ASSERT_EQ(message.has_value(), isUnderstood);
        if (message) {
            EXPECT_EQ(
                std::vector<uint8>(message->bytes.begin(), message->bytes.begin() + message->size),
                bytes);
        }
    }
}

} // namespace
