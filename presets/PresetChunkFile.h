// PresetChunkFile: what the plug-in's two kinds of preset file have in common.
#pragma once

#include "public.sdk/source/vst/vstpresetfile.h"

#include <optional>

namespace Steinberg {
namespace Vst {

/** A VST 3 preset file whose component state is empty and whose controller state is one of our own
    chunks: little-endian 32-bit fields without padding, the first of which, the marker, tells the
    kind of chunk and its format in one.

    Lives for one save or load. Keeps a reference to the stream meanwhile; a null stream is allowed
    and takes nothing. */
class PresetChunkFile : public PresetFile {
protected:
    using PresetFile::PresetFile;

    /** Writes the file up to the controller state: the header, then a component state of no bytes.
        @return false when the header failed */
    bool writeFront(const FUID& processorID);

    /** Writes what follows the controller state. xml is UTF-8 or null for a file without meta
        information; xmlSize is in bytes, -1 for up to the terminator. */
    bool writeBack(const char* xml, int32 xmlSize);

    /** Writes a component state of zero bytes, as all sound data lives elsewhere. */
    void writeEmptyComponentState();

    /** Sets field to the stream's next four bytes, or leaves it when they are not all there. */
    void readField(int32& field);

    /** The marker at the stream's position, which stays as it was; nothing when the stream is null
        or less than a marker is left. */
    static std::optional<int32> peekMarker(IBStream* stream) noexcept;
};

} // namespace Vst
} // namespace Steinberg
