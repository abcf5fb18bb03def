// Host calls in any order from any state of an instance's life: initialised twice, ended while
// processing, disconnected before it was connected, views that outlive their controller. An input
// is
//   host family, library's place, what the host lacks, then operations with what each takes
#include "tests/doubles/TemporaryHome.h"
#include "tests/fuzz/HostCallsScene.h"
#include "tests/fuzz/LimitedMemory.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const doubles::TemporaryHome home;
    const fuzz::LimitedMemory limited;
    fuzz::FuzzInput input(data, size);
    fuzz::HostCallsScene scene(input);
    for (int count = 0; count < 60 && !input.empty(); ++count)
        scene.step();
    scene.close();
    return 0;
}
