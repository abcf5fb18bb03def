#include "tools/check-library/Report.h"

#include "basics/PlugInInfo.h"
#include "tools/common/Json.h"
#include "tools/common/VoiceWalk.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

const char* markOf(Verdict verdict)
{
    switch (verdict) {
    case Verdict::good:
        return "\u2713";
    case Verdict::remark:
        return "!";
    case Verdict::bad:
        return "\u2717";
    case Verdict::untried:
        break;
    }
    return "-";
}

size_t badOnes(const Findings& findings)
{
    size_t count = 0;
    for (const auto& section : findings)
        count += static_cast<size_t>(
            std::count_if(section.findings.begin(), section.findings.end(),
                          [](const auto& finding) { return finding.verdict == Verdict::bad; }));
    return count;
}

std::string conclusion(size_t bad, bool isStrict)
{
    const std::string things = bad == 1 ? "One thing is" : std::to_string(bad) + " things are";
    if (bad > 0)
        return things + " not as the plug-in needs it: see \u2717 above.";
    return isStrict
               ? "The library keeps the contract, and everything that the plug-in needs is there."
               : "Everything that the plug-in needs is there.";
}

} // namespace

std::string textOf(const Findings& findings, const Options& options)
{
    std::string text;
    for (const auto& section : findings) {
        text += section.title + "\n";
        for (const auto& finding : section.findings) {
            text += std::string("  ") + markOf(finding.verdict) + " " +
                    tools::printable(finding.text) + "\n";
            if (!finding.remedy.empty())
                text += "      " + tools::printable(finding.remedy) + "\n";
        }
        text += "\n";
    }
    return text + conclusion(badOnes(findings), options.strict) + "\n";
}

std::string reportJson(const Findings& findings, const Options& options)
{
    auto list = nlohmann::ordered_json::array();
    for (const auto& section : findings)
        for (const auto& finding : section.findings) {
            auto entry = jsonOf(finding);
            entry["section"] = section.title;
            list.push_back(std::move(entry));
        }
    return tools::dumped({{"program", "check-library"},
                          {"version", kPlugInVersion},
                          {"library", options.library},
                          {"strict", options.strict},
                          {"usable", !hasBad(findings)},
                          {"checks", std::move(list)}});
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
