#include "tools/check-library/Finding.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::array<std::pair<Verdict, const char*>, 4> kVerdicts = {{
    {Verdict::good, "good"},
    {Verdict::remark, "remark"},
    {Verdict::bad, "bad"},
    {Verdict::untried, "untried"},
}};

} // namespace

Finding good(std::string check, std::string text, Json facts)
{
    return {Verdict::good, std::move(check), std::move(text), "", std::move(facts)};
}

Finding remark(std::string check, std::string text, Json facts)
{
    return {Verdict::remark, std::move(check), std::move(text), "", std::move(facts)};
}

Finding bad(std::string check, std::string text, std::string remedy, Json facts)
{
    return {Verdict::bad, std::move(check), std::move(text), std::move(remedy), std::move(facts)};
}

Json jsonOf(const Finding& finding)
{
    Json json;
    json["check"] = finding.check;
    json["verdict"] = std::find_if(kVerdicts.begin(), kVerdicts.end(), [&](const auto& entry) {
                          return entry.first == finding.verdict;
                      })->second;
    json["text"] = finding.text;
    if (!finding.remedy.empty())
        json["remedy"] = finding.remedy;
    if (!finding.facts.is_null())
        json["facts"] = finding.facts;
    return json;
}

Finding findingOf(const Json& json)
{
    const auto name = json.at("verdict").get<std::string>();
    const auto verdict = std::find_if(kVerdicts.begin(), kVerdicts.end(),
                                      [&](const auto& entry) { return name == entry.second; });
    return {verdict == kVerdicts.end() ? Verdict::bad : verdict->first, json.at("check"),
            json.at("text"), json.value("remedy", ""), json.value("facts", Json())};
}

bool hasBad(const std::vector<Finding>& findings)
{
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.verdict == Verdict::bad; });
}

bool hasBad(const Findings& findings)
{
    return std::any_of(findings.begin(), findings.end(),
                       [](const Section& section) { return hasBad(section.findings); });
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
