// AudioRenderer: lets the program fluidsynth play a MIDI file into an audio file.
#pragma once

#include "tools/play/output/WavFile.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

class AudioRenderer {
public:
    /** @param program the renderer's name or path
        @throws Failure when the soundfont is missing or is none */
    explicit AudioRenderer(std::string soundFont, std::string program = "fluidsynth");

    /** Renders midiFile into a 16-bit WAVE file.
        @return what the written file measures
        @throws Failure when the program is missing or fails, or leaves silence or no audio file */
    WavMeasures render(const std::string& midiFile, const std::string& wavFile, int sampleRate);

private:
    void run(const std::string& midiFile, const std::string& wavFile, int sampleRate) const;

    std::string soundFont;
    std::string program;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
