// runOther: figures that another program measures about itself.
#pragma once

#include <map>
#include <string>

namespace bench {

/** Runs a command, as the shell takes it, and reads its lines "NUMBER NAME".
    @return by name, which may be empty; nothing when the command failed */
std::map<std::string, double> runOther(const std::string& command);

} // namespace bench
