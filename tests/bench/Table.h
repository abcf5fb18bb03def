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
    bool once = false; ///< measured once in a run: repetition would not change it
    int runs = 0;      ///< 0 for as many as the options say
};

/** Sets the figures of one run: seconds, bytes or a count for each side. */
void report(benchmark::State& state, double ours, double floor);

/** The same where the figures are there already: runs the loop without work. */
void reportOnce(benchmark::State& state, double ours, double floor);

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

/** Times both sides in turn, so that what else the machine does slows both alike, and reports the
    medians of this thread's processor time.
    @param calls how often one work does what the line is about: figures are for one time */
void compare(benchmark::State& state, double calls, const Side& ours, const Side& floor);

/** The same pointer. The compiler does not know its object's class any more: calls stay virtual. */
template <class T>
T* unknown(T* object)
{
    T* volatile hidden = object;
    return hidden;
}

/** Makes the compiler work out value. */
template <class T>
void keep(const T& value)
{
    benchmark::DoNotOptimize(value);
}

// The lines by subject, in the order in which they are printed.
void addModuleLines();
void addLifeLines();
void addMemoryLines();
void addProcessLines();
void addMidiOutLines();
void addStressLines();
void addTickLines();
void addTextLines();
void addStudioLines();
void addPresetLibraryLines();
void addInstancesLines();

/** Runs the lines that the options ask for and prints the table. @return the program's result */
int printTable(int argc, char** argv);

} // namespace bench
