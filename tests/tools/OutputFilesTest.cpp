// The files that play writes: MIDI files, compared byte by byte and read as songs, and audio.
#include "tests/doubles/PresetFileBytes.h"
#include "tests/tools/MidiBytes.h"
#include "tests/tools/ScratchFolder.h"
#include "tools/common/Failure.h"
#include "tools/play/music/Song.h"
#include "tools/play/output/AudioRenderer.h"
#include "tools/play/output/MidiFileWriter.h"

#include <filesystem>
#include <gmock/gmock.h>

using namespace Steinberg;
using namespace Steinberg::Vst::play;
using doubles::le32;
using doubles::midiHeader;
using doubles::MidiTrack;
using doubles::ScratchFolder;
using Steinberg::Vst::tools::Failure;
using testing::_;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::HasSubstr;

namespace {

constexpr const char* kSoundFont = "/usr/share/sounds/sf2/TimGM6mb.sf2";

std::string le16(int value)
{
    return le32(value).substr(0, 2);
}

/** A RIFF chunk: its name, the length of its data, and the data. */
std::string chunk(const std::string& name, const std::string& data)
{
    return name + le32(static_cast<int>(data.size())) + data;
}

/** A WAVE file of 16-bit samples. */
std::string wavFile(int sampleRate, int channels, const std::vector<int>& samples)
{
    std::string data;
    for (const auto sample : samples)
        data += le16(sample);
    const int frame = 2 * channels;
    const auto format = le16(1) + le16(channels) + le32(sampleRate) + le32(sampleRate * frame) +
                        le16(frame) + le16(16);
    const std::string padding(1, '\0'); // behind a chunk of odd length
    return chunk("RIFF", "WAVE" + chunk("fmt ", format) + chunk("LIST", "abc") + padding +
                             chunk("data", data));
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

class OutputFile : public testing::Test {
protected:
    doubles::ScratchFolder folder;
};
using MidiFileWriterTest = OutputFile;
using WavFileTest = OutputFile;
using AudioRendererTest = OutputFile;

} // namespace

TEST_F(MidiFileWriterTest, MakesOnePulseOneSample)
{
    // 22,050 pulses a quarter note of half a second are 44,100 a second.
    MidiFileWriter writer(44100);
    writer.add({{0, 0, 60, 127}, {44100, 0, 60, 0}});
    writer.write(folder.file("o.mid"));
    EXPECT_EQ(ScratchFolder::read(folder.file("o.mid")),
              midiHeader(0, 1, 22050) + MidiTrack()
                                            .tempo(0, 500000)
                                            .noteOn(0, 0, 60, 127)
                                            .noteOff(44100, 0, 60, 0)
                                            .chunk(66150));
}

TEST_F(MidiFileWriterTest, KeepsEverySampleAtEveryRate)
{
    for (const int32 rate : {44100, 48000, 88200, 96000, 192000}) {
        MidiFileWriter writer(rate);
        writer.add({{0, 0, 60, 127}, {1, 15, 61, 1}, {12345, 0, 60, 0}, {1234567, 9, 36, 127}});
        writer.write(folder.file("o.mid"));
        const Song song(folder.file("o.mid"));
        std::vector<int64> samples;
        for (const auto& note : song.notes())
            samples.push_back(song.tempo().sampleAt(note.pulse, rate));
        EXPECT_THAT(samples, ElementsAre(0, 1, 12345, 1234567)) << rate;
        EXPECT_THAT(song.notes(),
                    ElementsAre(FieldsAre(_, 0, 60, 127, true), FieldsAre(_, 15, 61, 1, true),
                                FieldsAre(_, 0, 60, 0, false), FieldsAre(_, 9, 36, 127, true)));
    }
}

TEST_F(MidiFileWriterTest, PutsProgramChangesBeforeTheNotesOfTheirSample)
{
    MidiFileWriter writer(48000);
    writer.add({{24000, 3, 60, 127}});
    writer.add({{480, 3, 40}}, TempoMap(480)); // half a second: sample 24,000
    writer.write(folder.file("o.mid"));
    EXPECT_EQ(
        ScratchFolder::read(folder.file("o.mid")),
        midiHeader(0, 1, 24000) +
            MidiTrack().tempo(0, 500000).program(24000, 3, 40).noteOn(0, 3, 60, 127).chunk(72000));
}

TEST_F(MidiFileWriterTest, SaysWhenItCannotWrite)
{
    const MidiFileWriter writer(44100);
    EXPECT_THAT(sentenceOf([&] { writer.write(folder.file("none/o.mid")); }),
                HasSubstr("cannot be written."));
}

TEST_F(WavFileTest, MeasuresPeakAverageAndLength)
{
    const auto measures =
        measureWavFile(folder.write("a.wav", wavFile(2, 2, {16384, -16384, 16384, -16384})));
    // Sample rate, channels, seconds, peak and average, all of them exact.
    EXPECT_THAT(measures, FieldsAre(2, 2, 1.0, 0.5, 0.5));
    EXPECT_FALSE(measures.isSilent());
}

TEST_F(WavFileTest, TellsSilence)
{
    EXPECT_TRUE(measureWavFile(folder.write("a.wav", wavFile(44100, 2, {0, 0, 0, 0}))).isSilent());
    EXPECT_TRUE(measureWavFile(folder.write("b.wav", wavFile(44100, 2, {}))).isSilent());
}

TEST_F(WavFileTest, RefusesWhatIsNone)
{
    const auto whole = wavFile(44100, 1, {1, 2, 3});
    for (size_t size = 0; size < 36; ++size)
        EXPECT_NE(sentenceOf([&] { measureWavFile(folder.write("a.wav", whole.substr(0, size))); }),
                  "")
            << size;
    EXPECT_NE(sentenceOf([&] { measureWavFile(folder.file("none.wav")); }), "");
}

TEST(Decibels, AreTheLoudnessOfAnAmplitude)
{
    EXPECT_EQ(decibels(1), "0.0 dB");
    EXPECT_EQ(decibels(0.5), "-6.0 dB");
    EXPECT_EQ(decibels(0), "silence");
}

TEST_F(AudioRendererTest, RendersAudioThatIsNotSilent)
{
    if (!std::filesystem::exists(kSoundFont))
        GTEST_SKIP() << "no soundfont on this machine";
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

TEST_F(AudioRendererTest, RefusesASoundFontThatIsMissingOrNone)
{
    EXPECT_THAT(sentenceOf([&] { const AudioRenderer renderer(folder.file("none.sf2")); }),
                HasSubstr("There is no soundfont"));
    const auto noFont = folder.write("a.sf2", "just a text that is no font");
    EXPECT_THAT(sentenceOf([&] { const AudioRenderer renderer(noFont); }),
                HasSubstr("is not a soundfont."));
}

TEST_F(AudioRendererTest, RenderSaysWhatWentWrong)
{
    const auto font = folder.write("a.sf2", "RIFF....sfbk");
    const auto render = [&](const std::string& program) {
        // An old file must not be taken for the new one.
        const auto file = folder.write("o.wav", wavFile(44100, 2, {1000, 1000}));
        return sentenceOf([&] { AudioRenderer(font, program).render("a.mid", file, 44100); });
    };
    EXPECT_THAT(render("no-such-renderer"), HasSubstr("is not installed"));
    EXPECT_THAT(render("false"), HasSubstr("could not render"));
    EXPECT_THAT(render("true"), HasSubstr("left no audio file"));
    // A renderer that copies a silent file to the place that follows -F.
    const auto silent = folder.write("silent.wav", wavFile(44100, 2, {0, 0}));
    const auto program =
        folder.write("renderer", "#!/bin/sh\nwhile [ \"$1\" != -F ]; do shift; done\ncp '" +
                                     silent + "' \"$2\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    EXPECT_THAT(render(program), HasSubstr("is silent."));
}
