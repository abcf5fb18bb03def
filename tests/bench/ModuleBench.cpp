// The module file, beside sample plug-ins of the SDK.
#include "tests/bench/OtherProgram.h"
#include "tests/bench/Table.h"

#include <cstring>
#include <elf.h>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace bench {

namespace {

struct Peer {
    const char* module;
    const char* name;
    const char* what;
};
constexpr Peer kPeers[] = {{SYNC_DELAY_MODULE, "sync delay", "the SDK's lightest sample"},
                           {MIDI_CC_OUT_MODULE, "MIDI CC out", "the SDK's sample that sends MIDI"}};

/** @return 0 when the module could not be scanned */
double scanNanoseconds(const std::string& scanner, const std::string& module)
{
    const auto answers = runOther("'" + scanner + "' '" + module + "'");
    return answers.empty() ? 0 : answers.begin()->second;
}

void scan(benchmark::State& state, const char* scanner, const Peer& peer)
{
    std::vector<double> ours;
    std::vector<double> peers;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        peers.push_back(scanNanoseconds(scanner, peer.module) * 1e-9);
        ours.push_back(scanNanoseconds(scanner, OUR_MODULE) * 1e-9);
        if (ours.back() <= 0 || peers.back() <= 0)
            return fail(state, "a module could not be scanned");
        state.SetIterationTime(ours.back() + peers.back());
    }
    report(state, medianOf(std::move(ours)), medianOf(std::move(peers)));
}

void fileSize(benchmark::State& state, const Peer& peer)
{
    reportOnce(state, static_cast<double>(std::filesystem::file_size(OUR_MODULE)),
               static_cast<double>(std::filesystem::file_size(peer.module)));
}

template <typename Record>
Record recordAt(const std::vector<char>& bytes, size_t offset)
{
    Record record = {};
    if (offset <= bytes.size() && bytes.size() - offset >= sizeof(record))
        std::memcpy(&record, bytes.data() + offset, sizeof(record));
    return record;
}

/** The addresses that the loader fills in before the module can run. */
double relocationsOf(const char* module)
{
    std::ifstream stream(module, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    const auto header = recordAt<Elf64_Ehdr>(bytes, 0);
    size_t count = 0;
    for (size_t number = 0; number < header.e_shnum; ++number) {
        const auto section =
            recordAt<Elf64_Shdr>(bytes, header.e_shoff + number * sizeof(Elf64_Shdr));
        if (section.sh_type == SHT_RELA)
            count += section.sh_size / sizeof(Elf64_Rela);
    }
    return static_cast<double>(count);
}

void relocations(benchmark::State& state, const Peer& peer)
{
    reportOnce(state, relocationsOf(OUR_MODULE), relocationsOf(peer.module));
}

} // namespace

void addModuleLines()
{
    for (const Peer& peer : kPeers) {
        const std::string beside = std::string(" beside ") + peer.name;
        addLine({"scan in a process of C" + beside, peer.what, Unit::seconds, 1.1},
                [peer](benchmark::State& state) { scan(state, SCAN_PROGRAM, peer); });
        addLine({"scan in a process of C++" + beside, peer.what, Unit::seconds, 1.3},
                [peer](benchmark::State& state) { scan(state, SCAN_PROGRAM_IN_CPP, peer); });
        addLine({"module size on disk" + beside, peer.what, Unit::bytes, 1.5, true},
                [peer](benchmark::State& state) { fileSize(state, peer); });
        addLine({"module relocations" + beside, peer.what, Unit::count, 1.5, true},
                [peer](benchmark::State& state) { relocations(state, peer); });
    }
}

} // namespace bench
