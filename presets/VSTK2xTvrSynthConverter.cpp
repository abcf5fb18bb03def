#include "presets/VSTK2xTvrSynthConverter.h"

#include "presets/CubaseCategory.h"
#include "presets/TavrinSynthCategory.h"

namespace Steinberg {
namespace Vst {

VSTK2xTvrSynthConverter::VSTK2xTvrSynthConverter(const std::string& voice,
                                                 const std::string& category,
                                                 const std::string& subCategory, bool byKeywords)
: voiceName(voice)
, synthCategory(category)
, synthSubCategory(subCategory)
, keywordSearch(byKeywords)
{
    convertCategoryName();
}

int VSTK2xTvrSynthConverter::convertCategoryName()
{
    int category = 0;
    int subCategory = 0;
    if (getTavrinSynthCategorySubCategoryIndex(&category, &subCategory) != 0)
        return 1;
    const auto* records = Cubase::Category::categoryArray[category];
    if (!records) // untaken: every-category-has-one
        return 1;
    const auto& record = records[Cubase::searchCategoryIndex(records, voiceName, keywordSearch)];
    resultCategory = record.name;
    const auto* subRecords = record.subCategories[subCategory];
    if (!subRecords)
        return 1;
    const auto& subRecord =
        subRecords[Cubase::searchSubCategoryIndex(subRecords, voiceName, keywordSearch)];
    resultSubCategory = subRecord.subCategory;
    resultCharacter = subRecord.character;
    return 0;
}

int VSTK2xTvrSynthConverter::getTavrinSynthCategorySubCategoryIndex(int* category, int* subCategory)
{
    if (!category || !subCategory)
        return 1;
    for (int row = 0; row < Cubase::kCategoryCount; ++row) {
        if (synthCategory != TavrinSynth::VoiceCategoryName[row])
            continue;
        for (int column = 0; column < Cubase::kSubCategoryCount; ++column) {
            if (synthSubCategory != TavrinSynth::VoiceSubCategoryName[row][column])
                continue;
            *category = row;
            *subCategory = column;
            return 0;
        }
    }
    return 1;
}

} // namespace Vst
} // namespace Steinberg
