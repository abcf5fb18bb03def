#include "processor/ProcessorState.h"

#include "editorlib/VstIEditorConnect.h"

#include "pluginterfaces/base/ibstream.h"

#include <cstdlib>
#include <limits>
#include <memory>

namespace Steinberg {
namespace Vst {

namespace {

constexpr int32 kStateVersion = 0;
constexpr int32 kTextState = 1;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

/** Zeroed memory from calloc, for which the system provides pages only as they are written: a size
    field may claim two gigabytes although only four bytes follow. */
using ZeroedBuffer = std::unique_ptr<void, Free>;

ZeroedBuffer makeZeroed(size_t count, size_t size)
{
    return ZeroedBuffer(std::calloc(count, size));
}

bool writeInt32(IBStream& stream, int32 value)
{
    return stream.write(&value, sizeof(value), nullptr) == kResultOk;
}

/** When the stream reads too few bytes but reports success, the missing bytes of value keep their
    former content. */
bool readInt32(IBStream& stream, int32& value)
{
    return stream.read(&value, sizeof(value), nullptr) == kResultOk;
}

/** Moves the stream to its start. @return its size in bytes, or -1 */
int64 sizeOf(IBStream& stream)
{
    int64 size = -1;
    if (stream.seek(0, IBStream::kIBSeekEnd, &size) != kResultOk ||
        stream.seek(0, IBStream::kIBSeekSet, nullptr) != kResultOk)
        return -1;
    return size;
}

tresult restoreText(VstIEditorConnect& editor, IBStream* state)
{
    if (!state)
        return kResultOk;
    const int64 size = sizeOf(*state);
    if (size < 0 || size > std::numeric_limits<int32>::max())
        return kResultFalse;
    // size + 1 units are more than the bytes need, and leave at least one zero unit at the end.
    const ZeroedBuffer text = makeZeroed(static_cast<size_t>(size) + 1, sizeof(char16));
    if (!text || state->read(text.get(), static_cast<int32>(size), nullptr) != kResultOk)
        return kResultFalse;
    return editor.setStateText(static_cast<const char16*>(text.get())) == 0 ? kResultOk
                                                                            : kResultFalse;
}

tresult restoreBinary(VstIEditorConnect& editor, IBStream* state)
{
    int32 version = -1;
    if (!state || !readInt32(*state, version))
        return kResultFalse;
    // A later version of the plug-in wrote it. Ignored without an error, so that the project opens.
    if (version != kStateVersion)
        return kResultOk;
    int32 size = 0;
    if (!readInt32(*state, size) || size <= 0)
        return kResultFalse;
    const ZeroedBuffer bytes = makeZeroed(static_cast<size_t>(size), 1);
    if (!bytes || state->read(bytes.get(), size, nullptr) != kResultOk)
        return kResultFalse;
    editor.setStateChunk(bytes.get(), size);
    return kResultOk;
}

} // namespace

tresult saveLibraryState(VstIEditorConnect& editor, IBStream& state)
{
    if (!writeInt32(state, kStateVersion))
        return kResultFalse;
    std::vector<char> bytes = editor.getStateChunk();
    if (bytes.size() > static_cast<size_t>(std::numeric_limits<int32>::max()))
        return kResultFalse;
    const auto size = static_cast<int32>(bytes.size());
    if (!writeInt32(state, size))
        return kResultFalse;
    char none = 0; // a stream may refuse a null buffer even for zero bytes
    return state.write(bytes.empty() ? &none : bytes.data(), size, nullptr);
}

tresult restoreLibraryState(VstIEditorConnect& editor, IBStream* state)
{
    return editor.getStateFormat() == kTextState ? restoreText(editor, state)
                                                 : restoreBinary(editor, state);
}

} // namespace Vst
} // namespace Steinberg
