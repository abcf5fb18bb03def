#include "simulator/Voices.h"

#include "editorlib/TavrinSynthCategory.h"
#include "simulator/VoiceTable.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

constexpr auto mainCategories = static_cast<int32>(std::size(TavrinSynth::VoiceCategoryName));
constexpr auto subCategories = static_cast<int32>(std::size(TavrinSynth::VoiceSubCategoryName[0]));
constexpr int32 bareBank = 11; ///< a bank whose voice data has no field between code and name

const VoiceRow* findVoice(int32 bank, int32 number)
{
    const auto* end = voiceTable + voiceTableSize;
    const auto* first =
        std::find_if(voiceTable, end, [bank](const VoiceRow& row) { return row.bank == bank; });
    if (number < 0 || number >= end - first || first[number].bank != bank)
        return nullptr;
    return first + number;
}

bool writeText(const std::string& text, char* buffer)
{
    if (!buffer)
        return false;
    std::fill_n(buffer, nameBufferSize, '\0');
    std::copy_n(text.data(), std::min(text.size(), nameBufferSize), buffer);
    return true;
}

std::string place(int32 bank, int32 number)
{
    char text[16];
    std::snprintf(text, sizeof(text), "%c%02d", static_cast<char>('A' + bank), number + 1);
    return text;
}

} // namespace

int32 voiceCount(int32 bank)
{
    return static_cast<int32>(
        std::count_if(voiceTable, voiceTable + voiceTableSize,
                      [bank](const VoiceRow& row) { return row.bank == bank; }));
}

bool voiceExists(int32 bank, int32 number)
{
    return findVoice(bank, number) != nullptr;
}

bool writeVoiceData(int32 bank, int32 number, char* buffer)
{
    const auto* voice = findVoice(bank, number);
    if (!voice)
        return false;
    std::string text = std::to_string(voice->mainCategory * 16 + voice->subCategory) + ":";
    if (bank != bareBank)
        text += place(bank, number) + ":";
    return writeText(text + voice->name, buffer);
}

bool writeCategoryName(int32 mainCategory, char* buffer)
{
    if (mainCategory < 0 || mainCategory >= mainCategories)
        return false;
    return writeText(TavrinSynth::VoiceCategoryName[mainCategory], buffer);
}

bool writeSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer)
{
    if (mainCategory < 0 || mainCategory >= mainCategories || subCategory < 0 ||
        subCategory >= subCategories)
        return false;
    return writeText(TavrinSynth::VoiceSubCategoryName[mainCategory][subCategory], buffer);
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
