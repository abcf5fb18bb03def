#include "tools/common/VoiceWalk.h"

#include "presets/VoiceText.h"
#include "tools/common/Failure.h"

#include <numeric>

namespace Steinberg {
namespace Vst {
namespace tools {

std::string Voice::label() const
{
    return "bank " + std::to_string(bank) + ", voice " + std::to_string(number) + ", \"" +
           printable(voiceNameOf(text)) + "\"";
}

std::vector<int> allBanks()
{
    std::vector<int> banks(VoiceBank::kLast - VoiceBank::kFirst + 1);
    std::iota(banks.begin(), banks.end(), int{VoiceBank::kFirst});
    return banks;
}

std::vector<Voice> collectVoices(VstK2xPresetCreater& creater, const std::vector<int>& banks,
                                 bool (*mustStop)())
{
    std::vector<Voice> voices;
    for (const int value : banks) {
        const auto bank = static_cast<VoiceBank::Bank>(value);
        std::string text;
        int number = 0;
        for (; !mustStop() && creater.fetchVoiceData(bank, number, text) == 0; ++number) {
            if (number == kMostVoices)
                throw Failure("The editor library has no end of voices in bank " +
                              std::to_string(value) + ".");
            voices.push_back({bank, number, text});
        }
    }
    return voices;
}

std::string printable(std::string text)
{
    for (auto& character : text)
        if (static_cast<unsigned char>(character) < ' ' || character == '\x7F')
            character = '?';
    return text;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
