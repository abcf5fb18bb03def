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

class MidiMessageOf : public testing::TestWithParam<Bytes> {};

TEST_P(MidiMessageOf, IsWhatTheInstrumentUnderstands)
{
    const auto& [bytes, isUnderstood] = GetParam();
    const auto message = MidiMessage::parse(bytes.data(), bytes.size());
    ASSERT_EQ(message.has_value(), isUnderstood);
    if (!message)
        return;
    ASSERT_EQ(message->size, bytes.size());
    for (size_t index = 0; index < bytes.size(); ++index)
        EXPECT_EQ(message->bytes[index], bytes[index]);
}

INSTANTIATE_TEST_SUITE_P(Table, MidiMessageOf,
                         testing::Values(Bytes{{0x90, 0, 127}, true},      // note-on
                                         Bytes{{0x9F, 127, 0}, true},      // its end
                                         Bytes{{0x85, 60, 64}, true},      // note-off
                                         Bytes{{0xB3, 7, 100}, true},      // controller
                                         Bytes{{0xC9, 127}, true},         // program change
                                         Bytes{{0xA0, 60, 1}, false},      // key pressure
                                         Bytes{{0xD0, 60}, false},         // channel pressure
                                         Bytes{{0xE0, 0, 64}, false},      // pitch bend
                                         Bytes{{0xFE}, false},             // active sensing
                                         Bytes{{0xF8}, false},             // clock
                                         Bytes{{0xFF}, false},             // reset
                                         Bytes{{0xF2, 1, 2}, false},       // song position
                                         Bytes{{0xF0, 0x7E, 0xF7}, false}, // exclusive
                                         Bytes{{0xF0, 1, 2, 3, 0xF7}, false},
                                         Bytes{{60, 100}, false},          // running status
                                         Bytes{{0x90, 60}, false},         // cut
                                         Bytes{{0xC0}, false},             //
                                         Bytes{{}, false},                 //
                                         Bytes{{0x90, 60, 100, 0}, false}, // too long
                                         Bytes{{0xC0, 1, 2}, false},       //
                                         Bytes{{0x90, 128, 100}, false},   // no data byte
                                         Bytes{{0xB0, 7, 255}, false},     //
                                         Bytes{{0xC0, 200}, false}));

TEST(MidiMessage, OfNothingIsNone)
{
    EXPECT_FALSE(MidiMessage::parse(nullptr, 3));
}

} // namespace
