#include "tools/play/output/WavFile.h"

#include "tools/common/Failure.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr size_t kRiffHeader = 12;
constexpr size_t kChunkHeader = 8;
constexpr size_t kFormatSize = 16;
constexpr double kFullScale = 32768.0;

using Bytes = std::vector<unsigned char>;

unsigned littleEndian(const Bytes& bytes, size_t offset, size_t width)
{
    unsigned value = 0;
    for (size_t i = 0; i < width; ++i)
        value |= static_cast<unsigned>(bytes[offset + i]) << (8 * i);
    return value;
}

struct Chunk {
    size_t begin = 0;
    size_t size = 0;
};

Chunk findChunk(const Bytes& bytes, const char* name)
{
    for (size_t at = kRiffHeader; at + kChunkHeader <= bytes.size();) {
        const Chunk chunk{at + kChunkHeader, std::min<size_t>(littleEndian(bytes, at + 4, 4),
                                                              bytes.size() - at - kChunkHeader)};
        if (std::memcmp(&bytes[at], name, 4) == 0)
            return chunk;
        at = chunk.begin + chunk.size + chunk.size % 2;
    }
    return {};
}

void measureSamples(const Bytes& bytes, Chunk data, WavMeasures& measures)
{
    double squares = 0;
    const auto count = data.size / 2;
    for (size_t i = 0; i < count; ++i) {
        const auto unit = static_cast<int16_t>(littleEndian(bytes, data.begin + 2 * i, 2));
        const auto sample = std::fabs(unit / kFullScale);
        measures.peak = std::max(measures.peak, sample);
        squares += sample * sample;
    }
    if (count == 0)
        return;
    measures.rms = std::sqrt(squares / static_cast<double>(count));
    measures.seconds =
        static_cast<double>(count) / measures.channels / static_cast<double>(measures.sampleRate);
}

} // namespace

WavMeasures measureWavFile(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    const Bytes bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream)
        throw tools::Failure("The audio file \"" + path + "\" cannot be read.");
    const tools::Failure noWave("\"" + path + "\" is not a WAVE file with 16-bit samples.");
    if (bytes.size() < kRiffHeader || std::memcmp(bytes.data(), "RIFF", 4) != 0 ||
        std::memcmp(&bytes[8], "WAVE", 4) != 0)
        throw noWave;
    const auto format = findChunk(bytes, "fmt ");
    if (format.size < kFormatSize || littleEndian(bytes, format.begin + 14, 2) != 16)
        throw noWave;
    WavMeasures measures;
    measures.channels = static_cast<int>(littleEndian(bytes, format.begin + 2, 2));
    measures.sampleRate = static_cast<int>(littleEndian(bytes, format.begin + 4, 4));
    if (measures.channels < 1 || measures.sampleRate < 1)
        throw noWave;
    measureSamples(bytes, findChunk(bytes, "data"), measures);
    return measures;
}

std::string decibels(double amplitude)
{
    if (amplitude <= 0)
        return "silence";
    char text[32];
    std::snprintf(text, sizeof(text), "%.1f dB", 20 * std::log10(amplitude));
    return text;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
