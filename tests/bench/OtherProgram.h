// runOther: figures that another program measures about itself.
#pragma once

#include "tests/simulator/CommandOutput.h"

#include <map>
#include <sstream>

namespace bench {

/** Runs a command, as the shell takes it, and reads its lines "NUMBER NAME".
    @return by name, which may be empty; nothing when the command failed */
inline std::map<std::string, double> runOther(const std::string& command)
{
    const auto output = doubles::runCommand(command);
    std::map<std::string, double> figures;
    std::istringstream lines(output.status == 0 ? output.text : "");
    double figure = 0;
    for (std::string name; lines >> figure && std::getline(lines, name);)
        figures[name.empty() ? name : name.substr(1)] = figure;
    return figures;
}

} // namespace bench
