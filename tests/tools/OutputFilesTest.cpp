// What play writes is read back: MIDI files byte by byte and as songs, audio by its samples.
#include "tests/tools/MidiBytes.h"
#include "tests/tools/ScratchFolder.h"
#include "tools/common/Failure.h"
#include "tools/play/music/Song.h"
#include "tools/play/output/AudioRenderer.h"
#include "tools/play/output/MidiFileWriter.h"

#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>

using namespace Steinberg;
using namespace Steinberg::Vst::play;
using doubles::ScratchFolder;
using Steinberg::Vst::tools::Failure;
using testing::HasSubstr;

namespace {

constexpr const char* kSoundFont = "/usr/share/sounds/sf2/TimGM6mb.sf2";

std::string littleEndian(unsigned value, int width)
{
    std::string bytes;
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

/** A WAVE file of 16-bit samples. */
std::string wavFile(int sampleRate, int channels, const std::vector<int>& samples)
{
    std::string data;
    for (const auto sample : samples)
        data += littleEndian(static_cast<unsigned>(sample), 2);
    const auto rate = static_cast<unsigned>(sampleRate);
    const auto frame = static_cast<unsigned>(2 * channels);
    const auto format = littleEndian(1, 2) + littleEndian(static_cast<unsigned>(channels), 2) +
                        littleEndian(rate, 4) + littleEndian(rate * frame, 4) +
                        littleEndian(frame, 2) + littleEndian(16, 2);
    const auto body = "WAVEfmt " + littleEndian(16, 4) + format + "LIST" + littleEndian(3, 4) +
                      std::string("abc\0", 4) + "data" +
                      littleEndian(static_cast<unsigned>(data.size()), 4) + data;
    return "RIFF" + littleEndian(static_cast<unsigned>(body.size()), 4) + body;
}

template <typename Action>
std::string sentenceOf(Action&& action)
{
    try {
        action();
        return "";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

} // namespace

TEST(MidiFileWriter, MakesOnePulseOneSample)
{
    // 22,050 pulses a quarter note of half a second are 44,100 a second.
    const ScratchFolder folder;
    MidiFileWriter writer(44100);
    writer.add({{0, 0, 60, 127}, {44100, 0, 60, 0}});
    writer.write(folder.file("o.mid"));
    const std::string expected = doubles::midiHeader(0, 1, 22050) + doubles::MidiTrack()
                                                                        .tempo(0, 500000)
                                                                        .noteOn(0, 0, 60, 127)
                                                                        .noteOff(44100, 0, 60, 0)
                                                                        .chunk(66150);
    EXPECT_EQ(ScratchFolder::read(folder.file("o.mid")), expected);
}

TEST(MidiFileWriter, KeepsEverySampleAtEveryRate)
{
    const ScratchFolder folder;
    for (const int32 rate : {44100, 48000, 88200, 96000, 192000}) {
        MidiFileWriter writer(rate);
        writer.add({{0, 0, 60, 127}, {1, 15, 61, 1}, {12345, 0, 60, 0}, {1234567, 9, 36, 127}});
        writer.write(folder.file("o.mid"));
        const Song song(folder.file("o.mid"));
        ASSERT_EQ(song.notes().size(), 4U);
        EXPECT_EQ(song.tempo().sampleAt(song.notes()[1].pulse, rate), 1);
        EXPECT_EQ(song.tempo().sampleAt(song.notes()[2].pulse, rate), 12345);
        EXPECT_EQ(song.tempo().sampleAt(song.notes()[3].pulse, rate), 1234567);
        EXPECT_EQ(song.notes()[1].channel, 15);
        EXPECT_EQ(song.notes()[1].velocity, 1);
        EXPECT_FALSE(song.notes()[2].on);
    }
}

TEST(MidiFileWriter, PutsProgramChangesBeforeTheNotesOfTheirSample)
{
    const ScratchFolder folder;
    MidiFileWriter writer(48000);
    writer.add({{24000, 3, 60, 127}});
    writer.add({{480, 3, 40}}, TempoMap(480)); // half a second: sample 24,000
    writer.write(folder.file("o.mid"));
    EXPECT_EQ(ScratchFolder::read(folder.file("o.mid")),
              doubles::midiHeader(0, 1, 24000) + doubles::MidiTrack()
                                                     .tempo(0, 500000)
                                                     .program(24000, 3, 40)
                                                     .noteOn(0, 3, 60, 127)
                                                     .chunk(72000));
}

TEST(MidiFileWriter, SaysWhenItCannotWrite)
{
    const ScratchFolder folder;
    const MidiFileWriter writer(44100);
    EXPECT_THAT(sentenceOf([&] { writer.write(folder.file("none/o.mid")); }),
                HasSubstr("cannot be written."));
}

TEST(WavFile, MeasuresPeakAverageAndLength)
{
    const ScratchFolder folder;
    const auto measures =
        measureWavFile(folder.write("a.wav", wavFile(2, 2, {16384, -16384, 16384, -16384})));
    EXPECT_EQ(measures.sampleRate, 2);
    EXPECT_EQ(measures.channels, 2);
    EXPECT_DOUBLE_EQ(measures.seconds, 1);
    EXPECT_DOUBLE_EQ(measures.peak, 0.5);
    EXPECT_DOUBLE_EQ(measures.rms, 0.5);
    EXPECT_FALSE(measures.isSilent());
}

TEST(WavFile, TellsSilence)
{
    const ScratchFolder folder;
    EXPECT_TRUE(measureWavFile(folder.write("a.wav", wavFile(44100, 2, {0, 0, 0, 0}))).isSilent());
    EXPECT_TRUE(measureWavFile(folder.write("b.wav", wavFile(44100, 2, {}))).isSilent());
}

TEST(WavFile, RefusesWhatIsNone)
{
    const ScratchFolder folder;
    const auto whole = wavFile(44100, 1, {1, 2, 3});
    for (size_t size = 0; size < 36; ++size)
        EXPECT_NE(sentenceOf([&] { measureWavFile(folder.write("a.wav", whole.substr(0, size))); }),
                  "")
            << size;
    EXPECT_NE(sentenceOf([&] { measureWavFile(folder.file("none.wav")); }), "");
}

TEST(WavFile, SaysLoudnessInDecibels)
{
    EXPECT_EQ(decibels(1), "0.0 dB");
    EXPECT_EQ(decibels(0.5), "-6.0 dB");
    EXPECT_EQ(decibels(0), "silence");
}

TEST(AudioRenderer, RendersAudioThatIsNotSilent)
{
    if (!std::filesystem::exists(kSoundFont))
        GTEST_SKIP() << "no soundfont on this machine";
    const ScratchFolder folder;
    MidiFileWriter writer(48000);
    writer.add({{0, 0, 60, 127}, {48000, 0, 60, 0}});
    writer.write(folder.file("o.mid"));
    const auto measures =
        AudioRenderer(kSoundFont).render(folder.file("o.mid"), folder.file("o.wav"), 48000);
    EXPECT_EQ(measures.sampleRate, 48000);
    EXPECT_EQ(measures.channels, 2);
    EXPECT_GT(measures.seconds, 1);
    EXPECT_GT(measures.rms, 0.001);
}

TEST(AudioRenderer, SaysThatTheSoundFontIsMissingOrNone)
{
    const ScratchFolder folder;
    EXPECT_THAT(sentenceOf([&] { const AudioRenderer renderer(folder.file("none.sf2")); }),
                HasSubstr("There is no soundfont"));
    const auto noFont = folder.write("a.sf2", "just a text that is no font");
    EXPECT_THAT(sentenceOf([&] { const AudioRenderer renderer(noFont); }),
                HasSubstr("is not a soundfont."));
}

TEST(AudioRenderer, SaysThatTheProgramIsMissingOrFails)
{
    const ScratchFolder folder;
    const auto font = folder.write("a.sf2", "RIFF....sfbk");
    EXPECT_THAT(
        sentenceOf([&] {
            AudioRenderer(font, "no-such-renderer").render("a.mid", folder.file("o.wav"), 1);
        }),
        HasSubstr("is not installed"));
    EXPECT_THAT(
        sentenceOf([&] { AudioRenderer(font, "false").render("a.mid", folder.file("o.wav"), 1); }),
        HasSubstr("could not render"));
}

TEST(AudioRenderer, NeverTakesAnOldFileForTheNewOne)
{
    const ScratchFolder folder;
    const auto font = folder.write("a.sf2", "RIFF....sfbk");
    const auto old = folder.write("o.wav", wavFile(44100, 2, {1000, 1000}));
    EXPECT_THAT(sentenceOf([&] { AudioRenderer(font, "true").render("a.mid", old, 44100); }),
                HasSubstr("left no audio file"));
}

TEST(AudioRenderer, DoesNotTakeSilenceForMusic)
{
    // A renderer that copies a silent file to the place behind -F.
    const ScratchFolder folder;
    const auto font = folder.write("a.sf2", "RIFF....sfbk");
    const auto silent = folder.write("silent.wav", wavFile(44100, 2, {0, 0}));
    const auto program =
        folder.write("renderer", "#!/bin/sh\nwhile [ \"$1\" != -F ]; do shift; done\ncp '" +
                                     silent + "' \"$2\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    EXPECT_THAT(
        sentenceOf([&] { AudioRenderer(font, program).render("a.mid", folder.file("o.wav"), 1); }),
        HasSubstr("is silent."));
}
