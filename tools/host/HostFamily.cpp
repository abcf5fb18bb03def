#include "tools/host/HostFamily.h"

#include "tools/common/Failure.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

struct Row {
    const char* word;
    const char* name;
    const char* version; ///< when the command line gives none; null for a host without versions
    bool givesNames;
    bool isOlder;
};

constexpr std::array<Row, 11> kRows{{
    {"cubase", "Cubase", "7.5.1", true, false},
    {"cubase-artist", "Cubase Artist", "7.5.1", true, false},
    {"cubase-studio", "Cubase Studio", "5.0.0", true, false},
    {"cubase-elements", "Cubase Elements", "7.0.0", true, false},
    {"cubase-essential", "Cubase Essential", "5.0.0", true, false},
    {"cubase-ai", "Cubase AI", "7.0.0", true, false},
    {"cubase-le", "Cubase LE", "5.0.0", true, false},
    {"nuendo", "Nuendo", "6.5.0", true, false},
    {"standalone", "Standalone", "1.0.0", true, false},
    {"older", "Cubase SX", nullptr, false, true},
    {"plain", "play", nullptr, false, false},
}};

} // namespace

std::string HostFamily::description() const
{
    auto text = name.utf8();
    if (!versionText.utf8().empty())
        text += ", " + versionText.utf8();
    if (hasApplicationW)
        return text + (unicode ? ", Unicode" : ", 8-bit texts");
    return text + (hasApplicationA ? ", an older host" : ", a plain VST 3 host");
}

HostFamily parseHostFamily(const std::string& text, bool unicode)
{
    const auto colon = text.find(':');
    const auto word = text.substr(0, colon);
    const auto* row = std::find_if(kRows.begin(), kRows.end(),
                                   [&](const Row& candidate) { return word == candidate.word; });
    if (row == kRows.end())
        throw tools::Failure("There is no host \"" + word +
                             "\"; play can be: " + hostFamilyWords() + ".");
    HostFamily family{row->name,       "",           row->givesNames && unicode,
                      row->givesNames, row->isOlder, row->givesNames || row->isOlder};
    if (colon == std::string::npos) {
        if (row->version)
            family.versionText = std::string("Version ") + row->version;
        return family;
    }
    const auto version = text.substr(colon + 1);
    if (!row->version)
        throw tools::Failure("The host \"" + word + "\" tells no version.");
    if (version.empty() || std::isdigit(static_cast<unsigned char>(version[0])) == 0)
        throw tools::Failure("\"" + version + "\" is no version, which begins with a digit.");
    family.versionText = "Version " + version;
    return family;
}

std::string hostFamilyWords()
{
    std::string words;
    for (const auto& row : kRows)
        words += (words.empty() ? "" : ", ") + std::string(row.word);
    return words;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
