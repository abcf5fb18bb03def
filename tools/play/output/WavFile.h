// WavFile: what play checks of an audio file that it had rendered.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

struct WavMeasures {
    int sampleRate = 0; ///< Hz
    int channels = 0;
    double seconds = 0;
    double peak = 0; ///< 0 to 1, of full scale
    double rms = 0;  ///< 0 to 1, of full scale, all channels together

    bool isSilent() const { return peak == 0; }
};

/** Measures a RIFF WAVE file with 16-bit PCM samples.
    @throws Failure for any other file */
WavMeasures measureWavFile(const std::string& path);

/** An amplitude of 0 to 1 in dB of full scale: "-12.3 dB"; "silence" for 0. */
std::string decibels(double amplitude);

} // namespace play
} // namespace Vst
} // namespace Steinberg
