// States and user banks of any size.
#include "presets/VstK2xPresetCreater.h"
#include "presets/VstK2xUserBank.h"
#include "tests/bench/growth/Growth.h"
#include "tests/bench/LinkedInstance.h"
#include "tests/doubles/TemporaryHome.h"

#include "public.sdk/source/common/memorystream.h"

#include <stdexcept>

namespace bench::growth {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

const std::vector<int> kSizes = steps(1024, 8, 64 << 20);

/** An instance whose library has a state of this many bytes. */
struct Saving : LinkedScene {
    explicit Saving(int size) { library.state.assign(static_cast<size_t>(size), 'x'); }

    /** @return the stream, at its start */
    IPtr<MemoryStream> save()
    {
        auto stream = owned(new MemoryStream);
        instance.processor().getState(stream);
        stream->seek(0, IBStream::kIBSeekSet, nullptr);
        return stream;
    }
};

double saveState(int size)
{
    Saving saving(size);
    int64 bytes = 0;
    const double seconds = timeOf([&] { bytes = saving.save()->getSize(); });
    if (bytes <= size)
        throw std::runtime_error("the state was not saved");
    return seconds;
}

double loadState(int size)
{
    Saving saving(size);
    const auto stream = saving.save();
    const double seconds = timeOf([&] {
        stream->seek(0, IBStream::kIBSeekSet, nullptr);
        saving.instance.processor().setState(stream);
    });
    if (saving.library.lastSize != size)
        throw std::runtime_error("the state did not come back");
    return seconds;
}

double storeBank(int size)
{
    const doubles::TemporaryHome home;
    LeanLibrary library;
    library.bank.assign(static_cast<size_t>(size), 'x');
    VstK2xPresetCreater creater(library);
    const double seconds = timeOf([&] {
        creater.setVoiceDataInfo(static_cast<VoiceBank::Bank>(8), 0,
                                 VstK2xPresetCreater::kAllUserBanks,
                                 VstK2xPresetCreater::kUserFolder);
    });
    if (home.content("Voice.vstpreset").size() < static_cast<size_t>(size))
        throw std::runtime_error("the user bank was not stored");
    return seconds;
}

double loadBank(int size)
{
    LinkedScene scene;
    std::vector<char> bank(static_cast<size_t>(size), 'x');
    const auto stream = owned(new MemoryStream);
    VstK2xUserBank(stream).storeEditControllerUserBankData(8, 0, size, bank.data());
    const double seconds = timeOf([&] {
        stream->seek(0, IBStream::kIBSeekSet, nullptr);
        scene.instance.controller().setState(stream);
    });
    if (scene.library.lastSize != size)
        throw std::runtime_error("the user bank did not come back");
    return seconds;
}

} // namespace

void addStateSeries()
{
    const auto add = [](const char* name, std::function<double(int)> measure) {
        addSeries({"states and banks", name, "bytes", Cost::seconds, kSizes, std::move(measure)});
    };
    add("state, saved", saveState);
    add("state, loaded", loadState);
    add("user bank, stored as a file", storeBank);
    add("user bank, loaded", loadBank);
}

} // namespace bench::growth
