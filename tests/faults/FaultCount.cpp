#include "tests/faults/FaultCount.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <map>

namespace faults {
namespace {

using Counts = std::map<std::string, size_t>;

std::map<std::string, Counts>& counts()
{
    static std::map<std::string, Counts> all;
    return all;
}

/** Operations that answer with a pointer, for which a failure is null. */
bool givesPointer(const std::string& text)
{
    static const char* const names[] = {
        "createComponent",    "getService",       "getPortByIndex", "findPortById",
        "findDevice",         "getValue(",        "getChild(",      "getSystemName",
        "getDisplayName",     "getDeviceType",    "getAttributes",  "getApplicationName",
        "getVersionString",   "getParameterData", "query(",         "getVSTObserverObject",
        "getVSTEditorConnect"};
    return std::any_of(std::begin(names), std::end(names),
                       [&](const char* name) { return text.find(name) != std::string::npos; });
}

std::string columnOf(const Fault& fault)
{
    if (!fault.is(Kind::kHostAnswers) && !fault.is(Kind::kLibraryAnswers))
        return kindName(fault.kind);
    const std::string who = fault.is(Kind::kHostAnswers) ? "host" : "library";
    return who + (givesPointer(fault.text) ? " null" : " error");
}

void printLine(const std::string& name, const Counts& line)
{
    size_t sum = 0;
    for (const auto& [column, number] : line)
        sum += number;
    std::cout << "faults injected, " << name << ": " << sum;
    const char* separator = " (";
    for (const auto& [column, number] : line) {
        std::cout << separator << column << " " << number;
        separator = ", ";
    }
    std::cout << (line.empty() ? "" : ")") << std::endl;
}

class Summary : public testing::Environment {
public:
    void TearDown() override
    {
        Counts sum;
        for (const auto& [scenario, line] : counts())
            for (const auto& [column, number] : line)
                sum[column] += number;
        printLine("all", sum);
    }
};

const auto* const summary = testing::AddGlobalTestEnvironment(new Summary);

} // namespace

void count(const std::string& scenario, const Fault& fault)
{
    ++counts()[scenario][columnOf(fault)];
}

void printCount(const std::string& scenario)
{
    printLine(scenario, counts()[scenario]);
}

} // namespace faults
