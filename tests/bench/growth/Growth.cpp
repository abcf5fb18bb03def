#include "tests/bench/growth/Growth.h"

#include "tests/bench/Timing.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace bench::growth {

namespace {

constexpr double kBatchSeconds = 0.002;
constexpr int kBatches = 7;

std::vector<Series>& allSeries()
{
    static std::vector<Series> all;
    return all;
}

/** How many sizes of each series are measured, from the smallest on, and how thoroughly. */
struct Extent {
    size_t sizes = SIZE_MAX;
    int batches = kBatches;
    double batchSeconds = kBatchSeconds;
};
Extent extent;

double secondsOf(const std::function<void()>& work, int times)
{
    const double start = threadSeconds();
    for (int time = 0; time < times; ++time)
        work();
    return threadSeconds() - start;
}

const char* nameOf(Cost cost)
{
    return cost == Cost::seconds ? "seconds" : "bytes";
}

bool isAsked(const Series& series, const std::vector<std::string>& parts)
{
    const std::string name = series.subject + ": " + series.name;
    return parts.empty() || std::any_of(parts.begin(), parts.end(), [&](const std::string& part) {
               return name.find(part) != std::string::npos;
           });
}

void print(const Series& series)
{
    for (size_t index = 0; index < std::min(extent.sizes, series.sizes.size()); ++index) {
        const int size = series.sizes[index];
        const double cost = series.measure(size);
        if (!(cost > 0))
            throw std::runtime_error(series.subject + ": " + series.name + ": nothing measured");
        std::printf("%s\t%s\t%s\t%s\t%d\t%.9g\n", series.subject.c_str(), series.name.c_str(),
                    series.counted.c_str(), nameOf(series.cost), size, cost);
        std::fflush(stdout);
    }
}

} // namespace

std::vector<int> steps(int first, int factor, int last)
{
    std::vector<int> sizes;
    for (long size = first; size <= last; size *= factor)
        sizes.push_back(static_cast<int>(size));
    return sizes;
}

void addSeries(Series series)
{
    allSeries().push_back(std::move(series));
}

double timeOf(const std::function<void()>& work)
{
    int times = 1;
    while (secondsOf(work, times) < extent.batchSeconds)
        times *= 2;
    std::vector<double> batches;
    for (int batch = 0; batch < extent.batches; ++batch)
        batches.push_back(secondsOf(work, times) / times);
    return medianOf(std::move(batches));
}

double timeOnce(const std::function<void()>& work)
{
    return secondsOf(work, 1);
}

double timeOf(const std::function<void()>& work, const std::function<void()>& prepare)
{
    std::vector<double> batches;
    for (int batch = 0; batch < extent.batches; ++batch) {
        prepare();
        batches.push_back(secondsOf(work, 1));
    }
    return medianOf(std::move(batches));
}

double inFreshProcess(const std::function<double()>& work)
{
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        double result = 0;
        try {
            result = work();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "growth: %s\n", error.what());
        }
        const bool told = write(ends[1], &result, sizeof(result)) == sizeof(result);
        _exit(told ? 0 : 1);
    }
    close(ends[1]);
    double result = 0;
    const bool isRead = child > 0 && read(ends[0], &result, sizeof(result)) == sizeof(result);
    close(ends[0]);
    int status = 1;
    if (child > 0)
        waitpid(child, &status, 0);
    if (!isRead || status != 0)
        throw std::runtime_error("a measuring process failed");
    return result;
}

double residentBytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.compare(0, 8, "RssAnon:") == 0)
            return 1024 * std::stod(line.substr(8));
    throw std::runtime_error("the system does not tell what is resident");
}

void beShort()
{
    extent = {2, 1, 0};
}

void printSeries(const std::vector<std::string>& parts)
{
    for (const Series& series : allSeries())
        if (isAsked(series, parts))
            print(series);
}

} // namespace bench::growth
