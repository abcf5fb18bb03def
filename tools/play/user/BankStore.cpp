#include "tools/play/user/BankStore.h"

#include "tools/common/Failure.h"
#include "tools/common/PresetPlace.h"

#include <charconv>
#include <chrono>
#include <filesystem>
#include <map>
#include <thread>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

namespace fs = std::filesystem;

/** A file system's clock may stand still for this long. A file written twice meanwhile would look
    as if it had been left alone the second time. */
constexpr std::chrono::milliseconds kClockStep{20};

/** The preset files of a folder and when each was written. */
using Listing = std::map<std::string, fs::file_time_type>;

Listing listingOf(const std::string& folder)
{
    Listing listing;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        std::error_code ignored;
        if (entry.path().extension() == ".vstpreset" && entry.is_regular_file(ignored))
            listing[entry.path().string()] = entry.last_write_time(ignored);
    }
    return listing;
}

/** A file that is new or was written anew; empty when there is none. */
std::string writtenBetween(const Listing& before, const Listing& after)
{
    for (const auto& [file, time] : after) {
        const auto found = before.find(file);
        if (found == before.end() || found->second != time)
            return file;
    }
    return {};
}

bool readNumber(const char* begin, const char* end, int32& number)
{
    const auto result = std::from_chars(begin, end, number);
    return result.ec == std::errc() && result.ptr == end;
}

} // namespace

BankPlace bankPlaceOf(const std::string& words)
{
    const auto* const end = words.data() + words.size();
    const auto colon = words.find(':');
    BankPlace place{};
    if (colon == std::string::npos || !readNumber(words.data(), words.data() + colon, place.bank) ||
        !readNumber(words.data() + colon + 1, end, place.number))
        throw tools::Failure("\"" + words +
                             "\" is no user bank: give its bank and number, as in 9:2.");
    return place;
}

Report::StoredBank storeBank(SimulatorControl& simulator, BankPlace place)
{
    const auto folder = tools::presetFolder(VstK2xPresetCreater::kUserFolder);
    std::this_thread::sleep_for(kClockStep);
    const auto before = listingOf(folder);
    simulator.storeBank(static_cast<VoiceBank::Bank>(place.bank), place.number);
    const auto file = writtenBetween(before, listingOf(folder));
    if (file.empty())
        throw tools::Failure("The plug-in wrote no file for bank " + std::to_string(place.bank) +
                             ", number " + std::to_string(place.number) + ", to \"" + folder +
                             "\".");
    return {place.bank, place.number, file};
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
