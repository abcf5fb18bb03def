// Summary: what became of the voices.
#pragma once

#include "tools/make-presets/PresetWriter.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace makepresets {

class Summary {
public:
    void add(const tools::Voice& voice, const Result& result);

    /** Lines for a terminal, one for each count.
        @param untried voices that were not reached
        @param dryRun whether nothing was written */
    std::string text(const std::string& folder, size_t untried, bool dryRun) const;

    /** One sentence for each failure and for each voice that replaced an earlier voice's file. */
    const std::vector<std::string>& remarks() const { return sentences; }
    bool hasFailures() const { return failed > 0; }

private:
    size_t written = 0;
    size_t replaced = 0;
    size_t skipped = 0;
    size_t excluded = 0;
    size_t failed = 0;
    std::vector<std::string> sentences;
};

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
