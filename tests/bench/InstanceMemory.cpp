// instance-memory: prints the bytes of heap that the parts of an instance take, and the editor's
// texts as an array. A program of its own, since holes in a used heap would hide allocations. So
// would the allocator's cache of freed pieces, which is switched off from outside.
#include "tests/bench/LinkedInstance.h"
#include "tests/doubles/Parameters.h"

#include <cstdio>
#include <malloc.h>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using bench::BenchHost;
using bench::LeanLibrary;

constexpr size_t kParameters = doubles::kParameters;
/** Those of one part, whose texts all parts share, and the edit flag. */
constexpr size_t kParametersWithTexts = doubles::kParametersOfAPart + 1;

size_t heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/** @return the bytes that make takes and its result keeps */
template <typename Make>
size_t bytesOf(Make&& make)
{
    const size_t before = heapBytes();
    const auto kept = make();
    return heapBytes() - before;
}

size_t arrayOfTexts(const LeanLibrary& library)
{
    return bytesOf([&] {
        std::vector<std::string> texts;
        texts.reserve(kParameters * library.texts.size());
        for (size_t parameter = 0; parameter < kParameters; ++parameter)
            texts.insert(texts.end(), library.texts.begin(), library.texts.end());
        return texts;
    });
}

size_t oneParameter(int32 highest)
{
    LeanLibrary library(highest);
    return bytesOf([&] {
        return owned(new EditorParameter(&library, 0, 37012000, 2, 0, "AEG Attack Time 16"));
    });
}

void print(size_t bytes, const char* name)
{
    std::printf("%zu %s\n", bytes, name);
}

} // namespace

int main()
{
    const size_t one = oneParameter(0);
    const size_t bare = one * kParameters;
    const size_t texts = (oneParameter(127) - one) * kParametersWithTexts;
    LeanLibrary library;
    BenchHost host(library, false);
    // What the first instance in a process sets up for all of them is not counted.
    bench::warmUp(host);
    const size_t all = bytesOf([&] { return std::make_unique<bench::LinkedInstance>(host); });
    const size_t processor = bytesOf([&] {
        auto made = owned(new VstK2x);
        made->initialize(host.context());
        return made;
    });
    const size_t controller = bytesOf([] { return owned(new VstK2xController); });
    print(arrayOfTexts(library), "array of texts");
    print(all, "whole");
    print(texts, "value texts");
    print(bare, "parameters");
    print(processor, "processor");
    print(controller, "controller");
    print(all - texts - bare - processor - controller, "lists");
    return 0;
}
