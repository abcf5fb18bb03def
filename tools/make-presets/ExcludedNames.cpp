#include "tools/make-presets/ExcludedNames.h"

#include "tools/common/Failure.h"

#include <cerrno>
#include <cstring>
#include <fstream>

namespace Steinberg {
namespace Vst {
namespace makepresets {

std::set<std::string> readExcludedNames(const std::string& path)
{
    std::set<std::string> names;
    if (path.empty())
        return names;
    errno = 0;
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty())
            names.insert(line);
    }
    if (!file.is_open() || file.bad() || errno == EISDIR)
        throw tools::Failure("The list of excluded names '" + path +
                             "' cannot be read: " + std::strerror(errno) + ".");
    return names;
}

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
