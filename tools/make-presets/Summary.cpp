#include "tools/make-presets/Summary.h"

namespace Steinberg {
namespace Vst {
namespace makepresets {

namespace {

std::string line(const char* name, size_t count, const std::string& remark = {})
{
    auto text = "  " + std::string(name) + " " + std::to_string(count);
    if (count > 0 && !remark.empty())
        text += ", " + remark;
    return text + "\n";
}

std::string filesText(size_t count)
{
    return std::to_string(count) + (count == 1 ? " file" : " files");
}

} // namespace

void Summary::add(const tools::Voice& voice, const Result& result)
{
    switch (result.outcome) {
    case Outcome::written:
        ++written;
        if (result.replaced) {
            ++replaced;
            sentences.push_back("The preset of " + voice.label() +
                                " has the file name of an earlier one and replaces it.");
        }
        break;
    case Outcome::skipped:
        ++skipped;
        break;
    case Outcome::excluded:
        ++excluded;
        break;
    case Outcome::failed:
        ++failed;
        sentences.push_back("The preset of " + voice.label() + " failed: " + result.reason + ".");
        break;
    }
}

std::string Summary::text(const std::string& folder, size_t untried, bool dryRun) const
{
    auto remark = "in " + filesText(written - replaced);
    if (replaced > 0)
        remark += ": " + std::to_string(replaced) + " of them over another one";
    auto text = tools::printable(folder) + (dryRun ? ", if this were no dry run:\n" : ":\n");
    text += line("written", written, remark);
    text += line("skipped", skipped, "their files stand already");
    text += line("excluded", excluded);
    text += line("failed", failed);
    if (untried > 0)
        text += line("not tried", untried);
    return text;
}

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
