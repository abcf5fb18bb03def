// Growth: how the plug-in's cost grows with what it is given, as series of sizes and costs.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench::growth {

enum class Cost { seconds, bytes };

/** One series. The costs are of everything together, not of each: a cost that grows like the size
    has the exponent 1, one that does not grow at all 0. */
struct Series {
    std::string subject; ///< series of one subject are drawn into one picture
    std::string name;
    std::string counted; ///< what the sizes count
    Cost cost;
    std::vector<int> sizes;             ///< ascending, two or more
    std::function<double(int)> measure; ///< the cost at a size, above 0; throws what is wrong
};

/** Sizes from first on, each factor times the one before, up to last. */
std::vector<int> steps(int first, int factor, int last);

/** Adds a series at the end. */
void addSeries(Series series);

// The series by subject, in the order in which they are printed.
void addInstanceSeries();
void addBlockSeries();
void addTickSeries();
void addStudioSeries();
void addStateSeries();
void addPresetSeries();
void addProjectSeries();

/** Seconds of this thread's processor time that work takes: the median of several batches, each
    long enough for the clock. */
double timeOf(const std::function<void()>& work);

/** The same of work that is done a single time. */
double timeOnce(const std::function<void()>& work);

/** The same for what can be done only once after prepare, whose time is not counted. */
double timeOf(const std::function<void()>& work, const std::function<void()>& prepare);

/** The result of work in a process of its own, whose heap has no holes of earlier work. Throws when
    that process failed. */
double inFreshProcess(const std::function<double()>& work);

/** Resident bytes of the process, without those of mapped files. */
double residentBytes();

/** From now on the two smallest sizes of each series are measured, once. */
void beShort();

/** Measures the series whose "subject: name" has one of the parts in it, all without parts, and
    prints a line a size: subject, name, what is counted, unit, size and cost, parted by tabs.
    Throws what is wrong. */
void printSeries(const std::vector<std::string>& parts);

/** Prints what users notice at several lengths of a block: the jitter of the library's notes, how
    many automation values reach the library, and how many of its events arrive. */
void printLimits();

} // namespace bench::growth
