// MidiFile: a standard MIDI file in memory, as libsmf holds it.
#pragma once

#include <memory>
#include <smf.h>
#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

struct MidiFileDeleter {
    void operator()(smf_t* file) const { smf_delete(file); }
};
using MidiFile = std::unique_ptr<smf_t, MidiFileDeleter>;

/** Reads a file from disk. Nothing is written to the standard streams.
    @return never null
    @throws Failure for a file that is missing, empty, damaged, no MIDI file, or of a kind that
    cannot be played */
MidiFile readMidiFile(const std::string& path);

/** Writes a file to disk. @throws Failure when that does not succeed */
void writeMidiFile(smf_t& file, const std::string& path);

} // namespace play
} // namespace Vst
} // namespace Steinberg
