// VoiceBank: the instrument's voice banks as the editor library numbers them.
#pragma once

namespace Steinberg {
namespace Vst {

struct VoiceBank {
    /** The library's bank numbers, 0 to 14. Banks 8, 9, 10 and 14 are user banks, each of which is
        saved and loaded as one block of data; every other bank holds single voices. Values above 14
        name no bank. */
    enum Bank : int { kFirst = 0, kUser1 = 8, kUser2 = 9, kUser3 = 10, kUser4 = 14, kLast = 14 };
};

} // namespace Vst
} // namespace Steinberg
