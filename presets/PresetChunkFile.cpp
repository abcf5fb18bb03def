#include "presets/PresetChunkFile.h"

#include "basics/CallGuard.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {

bool PresetChunkFile::writeFront(const FUID& processorID)
{
    if (!stream)
        return false;
    setClassID(processorID);
    if (!writeHeader())
        return false;
    writeEmptyComponentState();
    return true;
}

bool PresetChunkFile::writeBack(const char* xml, int32 xmlSize)
{
    if (xml && (xmlSize < -1 || !writeMetaInfo(xml, xmlSize)))
        return false;
    return writeChunkList();
}

void PresetChunkFile::writeEmptyComponentState()
{
    Entry entry = {};
    if (stream && beginChunk(entry, kComponentState)) // untaken: few-chunks
        endChunk(entry);
}

void PresetChunkFile::readField(int32& field)
{
    int32 value = 0;
    if (readInt32(value))
        field = value;
}

std::optional<int32> PresetChunkFile::peekMarker(IBStream* stream) noexcept
{
    if (!stream)
        return std::nullopt;
    return guarded(std::optional<int32>(), [stream] {
        constexpr int32 size = sizeof(int32);
        int32 marker = -1;
        int32 got = 0;
        stream->read(&marker, size, &got);
        got = std::clamp(got, 0, size);
        if (got > 0)
            stream->seek(-got, IBStream::kIBSeekCur, nullptr);
        return got == size ? std::optional<int32>(marker) : std::nullopt;
    });
}

} // namespace Vst
} // namespace Steinberg
