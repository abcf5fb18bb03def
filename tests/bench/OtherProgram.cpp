#include "tests/bench/OtherProgram.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

namespace {

/** The figure and the name of a line. */
void readLine(const std::string& line, std::map<std::string, double>& figures)
{
    char* end = nullptr;
    const double figure = std::strtod(line.c_str(), &end);
    std::string name = end;
    name.erase(0, name.find_first_not_of(' '));
    name.erase(name.find_last_not_of('\n') + 1);
    figures[name] = figure;
}

} // namespace

std::map<std::string, double> runOther(const std::string& command)
{
    FILE* output = popen(command.c_str(), "r");
    if (!output)
        return {};
    std::map<std::string, double> figures;
    char line[256];
    while (std::fgets(line, sizeof(line), output))
        readLine(line, figures);
    return pclose(output) == 0 ? figures : std::map<std::string, double>();
}

} // namespace bench
