#include "tests/hosts/ardour/ArdourRun.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace hosts {

namespace fs = std::filesystem;

namespace {

const std::string kFact = "fact ";

// A loaded machine needs less than this; a command that takes longer hangs.
const std::string kPatience = "timeout -k 5 120 ";

std::string quoted(const std::string& text)
{
    return "'" + text + "'";
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> result;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        result.push_back(line);
    return result;
}

bool startsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> result;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        result.push_back(part);
    return result;
}

void readFacts(ArdourSession& session)
{
    for (const auto& line : linesOf(session.output.text)) {
        if (!startsWith(line, kFact))
            continue;
        auto values = split(line.substr(kFact.size()), '\t');
        const auto name = values.front();
        values.erase(values.begin());
        session.facts.emplace(name, values);
    }
}

} // namespace

std::vector<ArdourSession::Values> ArdourSession::all(const std::string& fact) const
{
    std::vector<Values> result;
    const auto range = facts.equal_range(fact);
    for (auto entry = range.first; entry != range.second; ++entry)
        result.push_back(entry->second);
    return result;
}

std::string ArdourSession::messages() const
{
    std::string result;
    for (const auto& line : linesOf(output.text))
        if (!startsWith(line, kFact))
            result += line + '\n';
    return result;
}

std::string ArdourSession::reported(const std::string& name) const
{
    std::string result;
    for (const auto& line : report)
        if (startsWith(line, name + ' ')) {
            if (!result.empty())
                return {};
            result = line.substr(name.size() + 1);
        }
    return result;
}

ArdourSession::Values ArdourSession::parameters() const
{
    Values result;
    std::copy_if(report.begin(), report.end(), std::back_inserter(result),
                 [](const auto& line) { return startsWith(line, "parameter "); });
    return result;
}

size_t ArdourSession::count(const std::string& line) const
{
    return static_cast<size_t>(std::count(report.begin(), report.end(), line));
}

ArdourRun::ArdourRun()
{
    fs::create_directory(folder.file("home"));
    const std::string scanner = quoted(ARDOUR_FOLDER "/ardour-vst3-scanner");
    const auto about = linesOf(command(scanner + " -V").text);
    // "ardour-vst3-scanner version VERSION" and more
    version = "Ardour " + (about.empty() ? "?" : split(about.front() + " ? ?", ' ')[2]);
    scan = command(scanner + " -f -q '" BUNDLE_FOLDER "'");
    cache = cacheText();
    recorded = session("record.lua", "");
    inactive = session("load.lua", "inactive");
    active = session("load.lua", "hosts");
}

// Ardour's own start script sets the same variables for sessions, but not for the scanner.
doubles::CommandOutput ArdourRun::command(const std::string& words) const
{
    const std::string home = quoted(folder.file("home"));
    return doubles::runCommand(
        "env -u DISPLAY -u XDG_CONFIG_HOME -u XDG_CACHE_HOME -u XDG_DATA_HOME HOME=" + home +
        " LD_LIBRARY_PATH=" ARDOUR_FOLDER " ARDOUR_DLL_PATH=" ARDOUR_FOLDER
        " ARDOUR_DATA_PATH=/usr/share/ardour7 ARDOUR_CONFIG_PATH=/etc/ardour7"
        " VST3_PATH='" BUILD_FOLDER "' " +
        kPatience + words);
}

ArdourSession ArdourRun::session(const std::string& script, const std::string& snapshot) const
{
    ArdourSession result;
    const auto report = folder.file("report-" + snapshot);
    result.output = command(
        "env HOSTS_FOLDER=" + quoted(folder.file("")) +
        " HOSTS_SCRIPTS='" SCRIPT_FOLDER "' HOSTS_SNAPSHOT=" + quoted(snapshot) +
        " SIMULATOR_REPORT=" + quoted(report) + " ardour7-lua '" SCRIPT_FOLDER "/" + script + "'");
    result.report = linesOf(doubles::ScratchFolder::read(report));
    readFacts(result);
    return result;
}

std::string ArdourRun::cacheText() const
{
    std::string result;
    std::error_code error;
    for (const auto& entry : fs::recursive_directory_iterator(folder.file("home"), error))
        if (entry.path().extension() == ".v3i")
            result += doubles::ScratchFolder::read(entry.path().string());
    return result;
}

} // namespace hosts
