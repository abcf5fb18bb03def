// growth: prints how the plug-in's cost grows, for scripts/growth to fit and to draw. Run it under
// with-simulator, which the series of whole projects need.
#include "tests/bench/growth/Growth.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

namespace {

using namespace bench::growth;

void addAllSeries()
{
    addInstanceSeries();
    addProjectSeries();
    addBlockSeries();
    addTickSeries();
    addStudioSeries();
    addStateSeries();
    addPresetSeries();
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Prints how the plug-in's cost grows, a line a size.");
    bool isShort = false;
    bool limits = false;
    std::vector<std::string> parts;
    app.add_flag("--short", isShort, "measure the two smallest sizes of each series, once");
    app.add_flag("--limits", limits, "print what users meet, by the length of a block");
    app.add_option("part", parts, "only series whose \"subject: name\" has one of these in it");
    CLI11_PARSE(app, argc, argv);
    try {
        if (isShort)
            beShort();
        addAllSeries();
        if (limits)
            printLimits();
        else
            printSeries(parts);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "growth: %s\n", error.what());
        return 1;
    }
    return 0;
}
