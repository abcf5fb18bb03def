// benchmarks: prints what the plug-in costs beside the least that it could, or beside its peers.
//
//   scripts/benchmarks                                     builds and prints the whole table
//   scripts/benchmarks --benchmark_filter='process.*'      lines of this kind only
//
// docs/performance.md says what each line is about. Google Benchmark's options work here too.
#include "tests/bench/Table.h"

#include <future>
#include <thread>

namespace {

/** A thread that does nothing. In a program with a single thread the C library's locks cost half,
    and hosts have several. */
class SecondThread {
public:
    ~SecondThread()
    {
        end.set_value();
        thread.join();
    }

private:
    std::promise<void> end;
    std::thread thread{[this] { end.get_future().wait(); }};
};

} // namespace

int main(int argc, char** argv)
{
    const SecondThread second;
    bench::addModuleLines();
    bench::addLifeLines();
    bench::addMemoryLines();
    bench::addProcessLines();
    bench::addMidiOutLines();
    bench::addStressLines();
    bench::addTickLines();
    bench::addTextLines();
    bench::addStudioLines();
    bench::addPresetLibraryLines();
    bench::addInstancesLines();
    return bench::printTable(argc, argv);
}
