// check-library: tries what the plug-in needs of its editor library, and tells why it stays empty.
#include "tools/check-library/Checkup.h"
#include "tools/check-library/Report.h"
#include "tools/check-library/StepProcess.h"
#include "tools/common/Program.h"
#include "tools/common/ProgressBar.h"

#include <iostream>
#include <unistd.h>

namespace {

using namespace Steinberg::Vst;
using namespace Steinberg::Vst::checklibrary;

int run(int argc, char** argv)
{
    const auto options = parseOptions(argc, argv);
    if (!options.step.empty()) {
        takeStep(options);
        return 0;
    }
    tools::ProgressBar bar(isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr);
    const auto all = options.strict ? 9. : 6.;
    double done = 0;
    const auto findings =
        checkAll(options, [&](const std::string& step) { bar.show(done++, all, step); });
    bar.wipe();
    std::cout << (options.json ? reportJson(findings, options) + "\n" : textOf(findings, options));
    return std::cout.flush() && !hasBad(findings) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    return tools::runProgram("check-library", run, argc, argv);
}
