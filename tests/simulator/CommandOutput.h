// runCommand: runs a shell command and keeps its output.
#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

namespace doubles {

struct CommandOutput {
    std::string text; ///< standard output and standard error
    int status = -1;  ///< exit status; -1 when a signal ended the shell
};

inline CommandOutput runCommand(const std::string& command)
{
    CommandOutput output;
    FILE* pipe = popen(("{ " + command + "\n} 2>&1").c_str(), "r");
    if (!pipe)
        return output;
    std::array<char, 4096> buffer{};
    size_t size = 0;
    while ((size = fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
        output.text.append(buffer.data(), size);
    const int status = pclose(pipe);
    if (WIFEXITED(status))
        output.status = WEXITSTATUS(status);
    return output;
}

} // namespace doubles
