#include "tools/check-library/Checkup.h"

#include "tools/check-library/LibraryFile.h"
#include "tools/check-library/PresetFolderCheck.h"
#include "tools/check-library/StepProcess.h"
#include "tools/check-library/Steps.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

/** Whether nothing can be asked of the library after this. */
bool isObstacle(const Finding& finding)
{
    return finding.verdict == Verdict::bad && finding.check.rfind("library-", 0) == 0;
}

class Checkup {
public:
    Checkup(const Options& newOptions, const std::function<void(const std::string&)>& newProgress)
    : options(newOptions)
    , progress(newProgress)
    {
    }

    Findings run()
    {
        begin("The plug-in");
        take("plug-in-bundle");
        const bool hasPlugIn = !hasBad(current().findings);
        begin("The editor library");
        const bool isUsable = checkFile() && take("library-load") && take("library-start");
        if (isUsable)
            askLibrary();
        else
            leaveOut("What is in the library was not tried.");
        begin("Presets");
        current().findings.push_back(checkPresetFolder());
        begin("All together");
        checkTogether(hasPlugIn && isUsable);
        return std::move(findings);
    }

private:
    void begin(const std::string& title) { findings.push_back({title, {}}); }
    Section& current() { return findings.back(); }

    bool checkFile()
    {
        current().findings.push_back(findingOf(lookAt(options.library)));
        return !hasBad(current().findings);
    }

    /** @return whether the next step has what it needs */
    bool take(const std::string& name)
    {
        if (!options.takes(name))
            return true;
        progress(name);
        auto found = runStep(stepNamed(name), options);
        auto& all = current().findings;
        all.insert(all.end(), found.begin(), found.end());
        return std::none_of(found.begin(), found.end(), isObstacle);
    }

    void askLibrary()
    {
        for (const auto* name : {"parameters", "voices", "playing", "state"})
            take(name);
        if (!options.strict)
            return;
        begin("The contract");
        for (const auto* name : {"callbacks", "threads", "lives"})
            take(name);
    }

    void checkTogether(bool isPossible)
    {
        if (!isPossible)
            return leaveOut("The plug-in was not tried with its library.");
        if (!options.checksInstalledLibrary())
            return leaveOut("The plug-in was not tried with this library: it loads none but the "
                            "installed one.");
        take("plug-in");
    }

    void leaveOut(const char* text)
    {
        current().findings.push_back({Verdict::untried, "untried", text, "", {}});
    }

    const Options& options;
    const std::function<void(const std::string&)>& progress;
    Findings findings;
};

} // namespace

Findings checkAll(const Options& options, const std::function<void(const std::string&)>& progress)
{
    return Checkup(options, progress).run();
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
