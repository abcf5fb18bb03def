// PresetChunkFile: the common base of the plug-in's two kinds of preset file.
#pragma once

#include "public.sdk/source/vst/vstpresetfile.h"

#include <optional>

namespace Steinberg {
namespace Vst {

/** A VST 3 preset file with an empty component state and a controller state of our own:
    little-endian 32-bit fields without padding. The first field, the marker, tells which kind of
    file it is.

    Used for one save or load, during which it holds a reference to the stream. With a null stream
    nothing is read or written. */
class PresetChunkFile : public PresetFile {
protected:
    using PresetFile::PresetFile;

    /** Writes what comes before the controller state: the header and an empty component state.
        @return false when the header failed */
    bool writeFront(const FUID& processorID);

    /** Writes what comes after the controller state.
        @param xml meta information as UTF-8; null for none
        @param xmlSize in bytes; -1 when xml is zero-terminated
        @return false when the stream refused it */
    bool writeBack(const char* xml, int32 xmlSize);

    /** Writes a component state of zero bytes. */
    void writeEmptyComponentState();

    /** Sets field to the stream's next four bytes; leaves it unchanged when fewer are left. */
    void readField(int32& field);

    /** The marker at the stream's position, which does not move; nothing when the stream is null or
        fewer than four bytes are left. */
    static std::optional<int32> peekMarker(IBStream* stream) noexcept;
};

} // namespace Vst
} // namespace Steinberg
