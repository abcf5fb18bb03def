// Tally: how often something was met, with the first place as an example.
#pragma once

#include "tools/check-library/Journal.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

class Tally {
public:
    void add(const std::string& place)
    {
        if (count++ == 0)
            first = place;
    }
    explicit operator bool() const { return count > 0; }
    size_t size() const { return count; }

    /** "Volume 3", or "Volume 3 and 12 others". */
    std::string text() const;

private:
    size_t count = 0;
    std::string first;
};

/** If anything was met, says so: before, then the tally's text, then behind. The remedy for what is
    bad is to tell the library's maker. */
void sayIf(Journal& journal, const Tally& tally, Verdict verdict, const char* check,
           const char* before, const char* behind);

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
