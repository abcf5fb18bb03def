#include "tests/hosts/validator/ValidatorReport.h"

#include <algorithm>
#include <sstream>

namespace hosts {

namespace {

const std::string kSuite = "TestSuite : ";
const std::string kError = "ERROR: ";
const std::string kSummary = "Result: ";

bool startsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t");
    const auto last = text.find_last_not_of(" \t\r");
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

class Reader {
public:
    ValidatorReport report;

    void line(const std::string& text)
    {
        if (startsWith(text, kSuite))
            suite = text.substr(kSuite.size());
        else if (text == "[Succeeded]")
            end(true);
        else if (startsWith(text, "[XXX") || text == "Failed to setup test!")
            end(false);
        else if (text == "Failed to teardown test!")
            failLast();
        else if (startsWith(text, kError))
            errors.push_back(trimmed(text.substr(kError.size())));
        else if (startsWith(text, kSummary))
            summary(text.substr(kSummary.size()));
        else if (text.size() > 2 && text.front() == '[' && text.back() == ']')
            begin(text.substr(1, text.size() - 2));
    }

private:
    std::string suite;
    std::string test;
    std::vector<std::string> errors;

    void begin(const std::string& name)
    {
        if (!test.empty()) // the one before never ended
            end(false);
        test = suite + " / " + name;
    }

    void end(bool passed)
    {
        report.outcomes.push_back({test, passed, errors});
        test.clear();
        errors.clear();
    }

    void failLast()
    {
        if (report.outcomes.empty())
            return;
        report.outcomes.back().passed = false;
        report.outcomes.back().errors.emplace_back("Failed to teardown test!");
    }

    // The validator's own count of failures leaves out what could not be set up or torn down.
    void summary(const std::string& text)
    {
        size_t passed = 0;
        size_t failed = 0;
        std::string word;
        std::istringstream words(text);
        words >> passed >> word >> word >> failed;
        report.finished =
            !words.fail() && test.empty() && passed + failed == report.outcomes.size();
    }
};

} // namespace

ValidatorReport ValidatorReport::read(const std::string& text)
{
    Reader reader;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        reader.line(line);
    return reader.report;
}

std::vector<ValidatorOutcome> ValidatorReport::failures() const
{
    std::vector<ValidatorOutcome> result;
    std::copy_if(outcomes.begin(), outcomes.end(), std::back_inserter(result),
                 [](const auto& outcome) { return !outcome.passed; });
    return result;
}

size_t ValidatorReport::countOf(const std::string& suite) const
{
    return static_cast<size_t>(
        std::count_if(outcomes.begin(), outcomes.end(), [&](const auto& outcome) {
            return startsWith(outcome.name, suite + " / ");
        }));
}

} // namespace hosts
