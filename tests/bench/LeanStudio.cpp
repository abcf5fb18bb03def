#include "tests/bench/LeanStudio.h"

namespace bench {

namespace {

std::u16string numbered(const char* text, size_t number)
{
    const std::string narrow = text + std::to_string(number);
    return {narrow.begin(), narrow.end()};
}

} // namespace

LeanMixer::LeanMixer(size_t count)
: tracks(count)
{
    for (size_t number = 0; number < count; ++number) {
        tracks[number].output.text = numbered("Microphone Synthesizer ", number);
        tracks[number].channel.integer = static_cast<int32>(number % 16);
    }
    tracks.back().output.text = u"RDL 1 - RDL3/RDL5 VST";
    tracks.back().channel.integer = kChannel;
}

LeanPort::LeanPort(size_t number)
: name(numbered("Audio Interface Input ", number))
, id(numbered("audio-interface/in/", number))
{
}

LeanPorts::LeanPorts(size_t count)
{
    for (size_t number = 0; number < count; ++number)
        ports.emplace_back(number);
}

} // namespace bench
