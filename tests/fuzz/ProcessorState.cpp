// The project's bytes, as a host hands them to the processor. An input is
//   options, stream options, the call that fails, bytes a read gives at most, the state's bytes
// and what the library is told is worked out here from the bytes alone.
#include "processor/VstK2x.h"
#include "tests/doubles/ScriptedLibrary.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/LimitedMemory.h"
#include "tests/fuzz/StreamFaults.h"

#include "public.sdk/source/vst/hosting/hostclasses.h"

#include <algorithm>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

enum Options : uint8_t {
    kText = 1,
    kRefusesText = 2,
    kThrows = 4,
    kNoLibrary = 8,
    kNoStream = 16,
};

/** Looks at every byte that it is given, and keeps the first ones. */
class StateLibrary : public doubles::ScriptedLibrary {
public:
    using ScriptedLibrary::ScriptedLibrary;

    void setStateChunk(const void* data, int32 chunkSize) override
    {
        FUZZ_CHECK(data && chunkSize > 0);
        const auto* bytes = static_cast<const char*>(data);
        ++chunks;
        size = chunkSize;
        front.assign(bytes, std::min(static_cast<size_t>(chunkSize), kKept));
        FUZZ_CHECK(bytes[chunkSize - 1] == bytes[chunkSize - 1]);
        ScriptedLibrary::setStateChunk(data, std::min(chunkSize, 1));
    }

    static constexpr size_t kKept = 1 << 16;
    int chunks = 0;
    int32 size = 0;
    std::string front;
};

/** The same bytes, read as a stream without faults reads them. */
class Reader {
public:
    Reader(const std::string& bytes, size_t mostAtOnce)
    : left(bytes)
    , most(mostAtOnce)
    {
    }
    int32 integer(int32 before)
    {
        const auto count = std::min({left.size(), most, sizeof(before)});
        std::memcpy(&before, left.data(), count);
        left.erase(0, count);
        return before;
    }
    std::string text(size_t size) { return left.substr(0, std::min(size, most)); }

private:
    std::string left;
    size_t most;
};

void connect(VstK2x& processor, VstIEditorConnect* editor)
{
    const auto message = owned(new HostMessage);
    message->setMessageID("VST_CONNECT_MESSAGE_ID");
    message->getAttributes()->setBinary("VST_CONNECT_BINARY_ID", &editor, sizeof(editor));
    FUZZ_CHECK(processor.notify(message) == kResultOk);
}

void checkBinary(Reader bytes, uint8_t options, const StateLibrary& library, tresult result)
{
    if (bytes.integer(-1) != 0) {
        FUZZ_CHECK(result == kResultOk && library.chunks == 0);
        return;
    }
    const int32 size = bytes.integer(0);
    if (size <= 0) {
        FUZZ_CHECK(result == kResultFalse && library.chunks == 0);
        return;
    }
    // Beyond the limit it depends on the machine whether there is memory.
    if (static_cast<size_t>(size) > fuzz::kMemoryLimit / 2 && library.chunks == 0) {
        FUZZ_CHECK(result == kResultFalse);
        return;
    }
    FUZZ_CHECK(library.chunks == 1 && library.size == size);
    FUZZ_CHECK(result == ((options & kThrows) ? kResultFalse : kResultOk));
    auto expected = bytes.text(static_cast<size_t>(size));
    expected.resize(std::min(static_cast<size_t>(size), StateLibrary::kKept), '\0');
    FUZZ_CHECK(library.front == expected);
}

void checkText(const std::string& bytes, size_t most, uint8_t options, const StateLibrary& library,
               tresult result)
{
    FUZZ_CHECK(library.chunks == 0);
    if (options & kThrows) {
        FUZZ_CHECK(result == kResultFalse);
        return;
    }
    std::u16string text(bytes.size() + 1, u'\0');
    std::memcpy(text.data(), bytes.data(), std::min(bytes.size(), most));
    text.resize(text.find(u'\0'));
    FUZZ_CHECK(library.stateTextsSet.size() == 1 && library.stateTextsSet[0] == text);
    FUZZ_CHECK(result == ((options & kRefusesText) ? kResultFalse : kResultOk));
}

/** What is written must come back as it was. */
void checkRoundTrip(VstK2x& processor, StateLibrary& library, const std::string& state)
{
    library.state.assign(state.begin(), state.end());
    doubles::StreamDouble written;
    FUZZ_CHECK(processor.getState(&written) == kResultOk);
    FUZZ_CHECK(written.data.size() == 8 + state.size());
    FUZZ_CHECK(written.data.compare(8, std::string::npos, state) == 0);
    written.position = 0;
    library.chunks = 0;
    FUZZ_CHECK(processor.setState(&written) == (state.empty() ? kResultFalse : kResultOk));
    FUZZ_CHECK(library.chunks == (state.empty() ? 0 : 1));
    FUZZ_CHECK(state.empty() || static_cast<size_t>(library.size) == state.size());
    FUZZ_CHECK(state.empty() || library.front == state.substr(0, StateLibrary::kKept));
    FUZZ_CHECK(written.getReferences() == 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::LimitedMemory limited;
    fuzz::FuzzInput input(data, size);
    const uint8_t options = input.byte();
    const fuzz::StreamFaults faults(input);

    doubles::Trace trace;
    StateLibrary library(trace);
    doubles::StreamDouble stream(input.rest());
    library.stateFormat = (options & kText) ? 1 : 0;
    library.stateTextResult = (options & kRefusesText) ? 7 : 0;
    if (options & kThrows) {
        library.throwAt("setStateChunk");
        library.throwAt("setStateText");
    }
    faults.applyTo(stream);

    const auto processor = owned(new VstK2x);
    if (!(options & kNoLibrary))
        connect(*processor, &library);
    const tresult result = processor->setState((options & kNoStream) ? nullptr : &stream);
    FUZZ_CHECK(stream.getReferences() == 1);
    FUZZ_CHECK(result == kResultOk || result == kResultFalse);

    const bool faulty =
        (faults.options & (fuzz::kFails | fuzz::kThrowsOnce | fuzz::kFailsFrom)) != 0;
    const size_t mostAtOnce =
        (faults.options & fuzz::kShortReads) ? faults.most : stream.data.size();
    if (options & kNoLibrary)
        FUZZ_CHECK(result == kResultOk && trace.texts().empty());
    else if (options & kNoStream)
        FUZZ_CHECK(result == ((options & kText) ? kResultOk : kResultFalse) && library.chunks == 0);
    else if (faulty)
        FUZZ_CHECK(library.chunks + static_cast<int>(library.stateTextsSet.size()) <= 1);
    else if (options & kText)
        checkText(stream.data, mostAtOnce, options, library, result);
    else
        checkBinary(Reader(stream.data, mostAtOnce), options, library, result);

    if (!(options & (kNoLibrary | kText | kThrows)))
        checkRoundTrip(*processor, library, stream.data);
    return 0;
}
