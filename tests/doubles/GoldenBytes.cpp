#include "tests/doubles/GoldenBytes.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

/** The text between two quotes, where a backslash makes a tab, a line end or a quote. */
std::string quotedBytes(const std::string& line)
{
    std::string bytes;
    for (size_t at = 1; at < line.size() && line[at] != '"'; ++at) {
        if (line[at] != '\\') {
            bytes += line[at];
            continue;
        }
        const char code = line[++at];
        if (code == 'n')
            bytes += '\n';
        else
            bytes += code == 't' ? '\t' : code;
    }
    return bytes;
}

/** A line of tests/golden/: a quoted text, or bytes in hexadecimal; then a comment behind "#". */
std::string lineBytes(const std::string& line)
{
    if (!line.empty() && line[0] == '"')
        return quotedBytes(line);
    std::istringstream digits(line.substr(0, line.find('#')));
    std::string bytes;
    unsigned value = 0;
    while (digits >> std::hex >> value)
        bytes += static_cast<char>(value);
    return bytes;
}

} // namespace

std::string doubles::goldenBytes(const std::string& name)
{
    std::ifstream file(std::string(GOLDEN_FOLDER) + "/" + name + ".hex");
    std::string bytes;
    for (std::string line; std::getline(file, line);)
        bytes += lineBytes(line);
    if (bytes.empty())
        throw std::runtime_error("no golden file " + name);
    return bytes;
}
