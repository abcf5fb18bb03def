// Finding: one thing that check-library looked at, and what came of it.
#pragma once

#include "tools/check-library/Remedies.h"

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

enum class Verdict {
    good,
    remark,  ///< works, and its user may notice
    bad,     ///< the plug-in needs it otherwise
    untried, ///< because something before it was bad
};

struct Finding {
    Verdict verdict;
    std::string check;            ///< for programs: "library-file", the same in every version
    std::string text;             ///< for people: whole sentences
    std::string remedy;           ///< what they can do; empty where nothing is to be done
    nlohmann::ordered_json facts; ///< the numbers of the text, for programs; may be null
};

/** What was found about one subject, in the order in which it was found. */
struct Section {
    std::string title;
    std::vector<Finding> findings;
};
using Findings = std::vector<Section>;

/** What is as it should be. */
Finding good(std::string check, std::string text, nlohmann::ordered_json facts = {});
/** What works, although its user may notice it, and nothing is to be done. */
Finding remark(std::string check, std::string text, nlohmann::ordered_json facts = {});
/** What the plug-in needs to be otherwise. */
Finding bad(std::string check, std::string text, std::string remedy = kTellMaker,
            nlohmann::ordered_json facts = {});

nlohmann::ordered_json jsonOf(const Finding& finding);
/** Reads what jsonOf made in another process. @throws nlohmann::json::exception */
Finding findingOf(const nlohmann::ordered_json& json);

/** Whether anything is bad. */
bool hasBad(const std::vector<Finding>& findings);
bool hasBad(const Findings& findings);

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
