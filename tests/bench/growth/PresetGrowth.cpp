// The preset library's generator.
#include "presets/VstK2xPresetCreater.h"
#include "tests/bench/growth/Growth.h"
#include "tests/bench/LeanLibrary.h"
#include "tests/doubles/TemporaryHome.h"

#include <map>
#include <stdexcept>

namespace bench::growth {

namespace {

using Steinberg::Vst::VstK2xPresetCreater;

/** As many voices as asked for, in the generator's form, and their names. */
struct Voices {
    explicit Voices(int count)
    {
        for (int number = 0; number < count; ++number) {
            names.push_back("Voice number " + std::to_string(number));
            byBank[0][static_cast<unsigned>(number)] = "32:" + names.back();
        }
    }

    std::map<unsigned, std::map<unsigned, std::string>> byBank;
    std::vector<std::string> names;
};

double timeOfWriting(Voices& voices, const std::vector<const char*>* excluded, size_t written)
{
    const doubles::TemporaryHome home;
    LeanLibrary library;
    VstK2xPresetCreater creater(library);
    const double seconds = timeOf([&] {
        creater.setVoiceDataInfo(voices.byBank, VstK2xPresetCreater::kAllVoiceBanks,
                                 VstK2xPresetCreater::kUserFolder, excluded, true, false);
    });
    if (home.files().size() != written)
        throw std::runtime_error("another number of voices was written");
    return seconds;
}

double write(int count)
{
    Voices voices(count);
    return timeOfWriting(voices, nullptr, static_cast<size_t>(count));
}

/** Each voice has its name among the excluded ones, so that no file is written. */
double exclude(int count)
{
    Voices voices(count);
    std::vector<const char*> excluded;
    for (const std::string& name : voices.names)
        excluded.push_back(name.c_str());
    return timeOfWriting(voices, &excluded, 0);
}

} // namespace

void addPresetSeries()
{
    const auto add = [](const char* name, std::function<double(int)> measure) {
        addSeries({"preset library",
                   name,
                   "voices",
                   Cost::seconds,
                   {17, 170, 1700, 17'000},
                   std::move(measure)});
    };
    add("voices written", write);
    add("voices and as many exclusions", exclude);
}

} // namespace bench::growth
