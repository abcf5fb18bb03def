#include "tests/bench/Table.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace bench {

namespace {

constexpr auto kOurs = "ours";
constexpr auto kFloor = "floor";

/** Enough for a median, and for the whole table in a minute or so. */
char kRepetitions[] = "--benchmark_repetitions=7";
char kMinTime[] = "--benchmark_min_time=0.1";

std::map<std::string, Line>& lines()
{
    static std::map<std::string, Line> all;
    return all;
}

bool& anyFailed()
{
    static bool failed = false;
    return failed;
}

double secondsOf(const Side& side)
{
    side.prepare();
    const double start = threadSeconds();
    side.work();
    return threadSeconds() - start;
}

std::string scaled(double value, const char* const (&units)[4], double step)
{
    size_t unit = 0;
    for (; value >= step && unit < 3; ++unit)
        value /= step;
    char text[32];
    std::snprintf(text, sizeof(text), "%.*f %s",
                  value < 10    ? 2
                  : value < 100 ? 1
                                : 0,
                  value, units[unit]);
    return text;
}

std::string written(double value, Unit unit)
{
    switch (unit) {
    case Unit::seconds:
        return scaled(value * 1e9, {"ns", "us", "ms", "s"}, 1000);
    case Unit::bytes:
        return scaled(value, {"B", "KiB", "MiB", "GiB"}, 1024);
    case Unit::count:
        break;
    }
    return std::to_string(static_cast<long>(value));
}

/** Prints each line when all its repetitions are done. */
class TableReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override
    {
        std::printf("%-52s %9s %9s %7s %13s %6s  %s\n", "what", "ours", "floor", "ratio",
                    "from - to", "aim", "floor or peer");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        std::vector<double> ours, floors, ratios;
        for (const Run& run : runs) {
            const auto our = run.counters.find(kOurs);
            const auto floor = run.counters.find(kFloor);
            if (run.run_type != Run::RT_Iteration || our == run.counters.end() ||
                floor == run.counters.end())
                continue;
            ours.push_back(our->second);
            floors.push_back(floor->second);
            ratios.push_back(our->second / floor->second);
        }
        if (!ours.empty())
            printLine(lines().at(runs[0].run_name.function_name), ours, floors, ratios);
    }

private:
    static void printLine(const Line& line, const std::vector<double>& ours,
                          const std::vector<double>& floors, const std::vector<double>& ratios)
    {
        const auto [least, most] = std::minmax_element(ratios.begin(), ratios.end());
        char aim[16] = "-";
        if (line.aim > 0)
            std::snprintf(aim, sizeof(aim), "%.1f", line.aim);
        std::printf("%-52s %9s %9s %7.2f %5.2f - %5.2f %6s  %s\n", line.what.c_str(),
                    written(medianOf(ours), line.unit).c_str(),
                    written(medianOf(floors), line.unit).c_str(), medianOf(ratios), *least, *most,
                    aim, line.against.c_str());
        std::fflush(stdout);
    }
};

} // namespace

void report(benchmark::State& state, double ours, double floor)
{
    state.counters[kOurs] = ours;
    state.counters[kFloor] = floor;
}

void reportOnce(benchmark::State& state, double ours, double floor)
{
    for (auto iteration : state) {
        static_cast<void>(iteration);
        state.SetIterationTime(1);
    }
    report(state, ours, floor);
}

void fail(benchmark::State& state, const char* why)
{
    anyFailed() = true;
    std::fprintf(stderr, "not measured: %s\n", why);
    state.SkipWithError(why);
}

void addLine(const Line& line, Measure measure)
{
    lines()[line.what] = line;
    auto* benchmark = benchmark::RegisterBenchmark(line.what.c_str(), std::move(measure));
    benchmark->UseManualTime();
    if (line.once)
        benchmark->Iterations(1);
    if (line.runs > 0)
        benchmark->Repetitions(line.runs);
}

void compare(benchmark::State& state, double calls, const Side& ours, const Side& floor)
{
    std::vector<double> ourTimes;
    std::vector<double> floorTimes;
    secondsOf(floor);
    secondsOf(ours);
    bool oursFirst = false;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        if (oursFirst)
            ourTimes.push_back(secondsOf(ours));
        floorTimes.push_back(secondsOf(floor));
        if (!oursFirst)
            ourTimes.push_back(secondsOf(ours));
        oursFirst = !oursFirst;
        state.SetIterationTime(ourTimes.back() + floorTimes.back());
    }
    report(state, medianOf(std::move(ourTimes)) / calls, medianOf(std::move(floorTimes)) / calls);
}

int printTable(int argc, char** argv)
{
    // The caller's own options come last, so that they win.
    std::vector<char*> arguments = {argv[0], kRepetitions, kMinTime};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return anyFailed() ? 1 : 0;
}

} // namespace bench
