#include "tests/hosts/validator/ExpectedFailures.h"

#include <algorithm>
#include <sstream>

namespace hosts {

namespace {

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t");
    const auto last = text.find_last_not_of(" \t\r");
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string result;
    for (const auto& line : lines)
        result += (result.empty() ? "" : "; ") + line;
    return result.empty() ? "no error line" : result;
}

} // namespace

ExpectedFailures ExpectedFailures::read(const std::string& text)
{
    ExpectedFailures result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        result.readLine(line);
    for (const auto& entry : result.entries)
        if (entry.test.empty() || entry.reason.empty())
            result.mistakes.push_back("an entry lacks its test or its reason: " + entry.test);
    return result;
}

void ExpectedFailures::readLine(const std::string& line)
{
    const auto content = trimmed(line);
    if (content.empty() || content.front() == '#')
        return;
    const bool continues = line.front() == ' ' || line.front() == '\t';
    if (continues && !entries.empty() && !entries.back().reason.empty()) {
        entries.back().reason += ' ' + content;
        return;
    }
    const auto colon = content.find(':');
    if (colon == std::string::npos)
        mistakes.push_back("not understood: " + line);
    else
        readField(content.substr(0, colon), trimmed(content.substr(colon + 1)));
}

void ExpectedFailures::readField(const std::string& field, const std::string& value)
{
    if (field == "test")
        entries.push_back({value, {}, {}});
    else if (entries.empty())
        mistakes.push_back("before the first test: " + field);
    else if (field == "error")
        entries.back().errors.push_back(value);
    else if (field == "reason")
        entries.back().reason = value;
    else
        mistakes.push_back("not understood: " + field);
}

const ExpectedFailures::Entry* ExpectedFailures::find(const std::string& test) const
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& entry) { return entry.test == test; });
    return found == entries.end() ? nullptr : &*found;
}

std::vector<std::string> ExpectedFailures::compare(const ValidatorReport& report) const
{
    auto complaints = mistakes;
    if (!report.finished)
        complaints.emplace_back("the run broke off, or its summary counts other tests");
    compareFailures(report, complaints);
    compareEntries(report, complaints);
    return complaints;
}

void ExpectedFailures::compareFailures(const ValidatorReport& report,
                                       std::vector<std::string>& complaints) const
{
    for (const auto& outcome : report.outcomes) {
        const Entry* entry = find(outcome.name);
        if (outcome.passed && !outcome.errors.empty())
            complaints.push_back(outcome.name + " passed with errors: " + joined(outcome.errors));
        else if (!outcome.passed && !entry)
            complaints.push_back(outcome.name + " failed: " + joined(outcome.errors));
        else if (!outcome.passed && entry->errors != outcome.errors)
            complaints.push_back(outcome.name +
                                 " failed in another way: " + joined(outcome.errors));
    }
}

void ExpectedFailures::compareEntries(const ValidatorReport& report,
                                      std::vector<std::string>& complaints) const
{
    const auto failures = report.failures();
    for (const auto& entry : entries) {
        const bool failed = std::any_of(failures.begin(), failures.end(), [&](const auto& outcome) {
            return outcome.name == entry.test;
        });
        if (!failed)
            complaints.push_back(entry.test + " is expected to fail and did not");
    }
}

} // namespace hosts
