// The controller state of a preset file, as a host hands it to the controller. An input is
//   stream options, the call that fails, bytes a read gives at most, bytes in front, the rest
#include "controller/VstK2xController.h"
#include "tests/doubles/InProcessLibrary.h"
#include "tests/doubles/ScriptedHost.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/LimitedMemory.h"
#include "tests/fuzz/StreamFaults.h"

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

/** Beside those of fuzz::StreamOptions. */
enum Options : uint8_t {
    kNotSeekable = 16,
    kLibraryThrows = 32,
    kNoStream = 64,
};

/** One controller for all inputs: a state leaves nothing behind in it. */
class BoundScene {
public:
    BoundScene()
    {
        library.defaultParameter = {0, 0, 0, 0, {}};
        host.service.offer(&library, library.handle());
        FUZZ_CHECK(controller->initialize(&host.context) == kResultOk);
    }
    BoundScene(const BoundScene&) = delete;
    BoundScene& operator=(const BoundScene&) = delete;
    ~BoundScene()
    {
        controller->terminate();
        controller = nullptr;
        FUZZ_CHECK(host.ledger().empty());
        FUZZ_CHECK(library.complaints().empty());
    }

    doubles::Trace trace;
    doubles::ScriptedHost host{trace};
    doubles::InProcessLibrary library{trace};
    IPtr<VstK2xController> controller = owned(new VstK2xController);
};

/** A field that is cut off keeps its former value. */
int32 fieldAt(const std::string& bytes, size_t offset, int32 before)
{
    if (bytes.size() >= offset + sizeof(before))
        std::memcpy(&before, bytes.data() + offset, sizeof(before));
    return before;
}

void check(const std::string& bytes, const BoundScene& scene)
{
    const auto told = scene.trace.texts();
    const auto& banks = scene.library.userBanksApplied;
    const int32 bank = fieldAt(bytes, 4, -1);
    const int32 number = fieldAt(bytes, 8, -1);
    const auto numbers = std::to_string(bank) + ", " + std::to_string(number);
    switch (fieldAt(bytes, 0, -1)) {
    case 1:
        FUZZ_CHECK(told.size() == 1 && told[0] == "library.applyPreset(" + numbers + ")");
        return;
    case 2:
        break;
    default:
        FUZZ_CHECK(told.empty());
        return;
    }
    const int32 size = fieldAt(bytes, 12, 0);
    if (size < 1 || static_cast<size_t>(size) > fuzz::kMemoryLimit) {
        FUZZ_CHECK(told.empty());
        return;
    }
    // Near the limit there is not memory for every copy of the data, here and in the double.
    if (static_cast<size_t>(size) > fuzz::kMemoryLimit / 4)
        return;
    FUZZ_CHECK(told.size() == 1 && told[0] == "library.applyUserBank(" + numbers + ", " +
                                                  std::to_string(size) + " bytes)");
    auto data = bytes.substr(16, static_cast<size_t>(size));
    data.resize(static_cast<size_t>(size), '\0');
    FUZZ_CHECK(banks.size() == 1 && std::string(banks[0].begin(), banks[0].end()) == data);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static BoundScene scene;
    scene.trace.clear();
    scene.library.userBanksApplied.clear();
    scene.library.clearFaults();

    const fuzz::LimitedMemory limited;
    fuzz::FuzzInput input(data, size);
    const fuzz::StreamFaults faults(input);
    const uint8_t options = faults.options;
    const size_t front = input.byte();
    const auto bytes = input.rest();
    doubles::StreamDouble stream(std::string(front, '\x01') + bytes);
    stream.position = static_cast<int64>(front);
    faults.applyTo(stream);
    stream.seekable = (options & kNotSeekable) == 0;
    if (options & kLibraryThrows) {
        scene.library.throwAt("applyPreset");
        scene.library.throwAt("applyUserBank");
    }

    IBStream* given = (options & kNoStream) ? nullptr : &stream;
    FUZZ_CHECK(scene.controller->setState(given) == kResultOk);
    FUZZ_CHECK(stream.getReferences() == 1);
    FUZZ_CHECK(scene.library.userBanksApplied.size() <= 1 && scene.trace.texts().size() <= 1);
    if (options == 0)
        check(bytes, scene);
    if (options == 0 && scene.trace.texts().empty() && fieldAt(bytes, 0, -1) != 2)
        FUZZ_CHECK(stream.position == static_cast<int64>(front));
    if (options & kNoStream)
        FUZZ_CHECK(scene.trace.texts().empty() && stream.callCount == 0);

    doubles::StreamDouble written;
    FUZZ_CHECK(scene.controller->getState(&written) == kResultOk && written.callCount == 0);
    return 0;
}
