// Table: the lines of the benchmark table, and how both sides of a line are timed.
#pragma once

#include "tests/bench/Timing.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

namespace bench {

/** How a line's figures are written. */
enum class Unit { seconds, bytes, count };

/** One line: ours beside its floor or peer. */
struct Line {
    std::string what; ///< also the benchmark's name
    std::string against;
    Unit unit = Unit::seconds;
    double aim = 0;    ///< highest ratio wanted; 0 for a line that only reports
    bool once = false; ///< the figure does not vary with repetition inside a run
    int runs = 0;      ///< 0 for as many as the options say
};

/** Sets the figures of one run: seconds, bytes or a count for each side. */
void report(benchmark::State& state, double ours, double floor);

/** Ends the line without figures; the table says why and the program fails. */
void fail(benchmark::State& state, const char* why);

using Measure = std::function<void(benchmark::State&)>;

/** Adds a line at the end of the table. */
void addLine(const Line& line, Measure measure);

/** One side of a comparison. Only work is timed. */
struct Side {
    std::function<void()> work;
    std::function<void()> prepare = [] {};
};

/** Times both sides in turn, so that both meet the machine in the same mood, and reports the
    medians of this thread's processor time.
    @param calls how many of the things that the line is about one work does: figures are for one */
void compare(benchmark::State& state, double calls, const Side& ours, const Side& floor);

/** The same pointer, of whose object the compiler knows nothing any more: calls stay virtual. */
template <class T>
T* unknown(T* object)
{
    T* volatile hidden = object;
    return hidden;
}

/** Makes sure that value is worked out. */
template <class T>
void keep(const T& value)
{
    benchmark::DoNotOptimize(value);
}

/** Runs the lines that the options ask for and prints the table. @return the program's result */
int printTable(int argc, char** argv);

} // namespace bench
