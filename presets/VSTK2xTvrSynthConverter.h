// VSTK2xTvrSynthConverter: from the synth's voice category to the media browser's.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {

/** Converts one voice as it is built and then holds the results. Reads fixed tables only, so any
    number may work at once. [any thread] */
class VSTK2xTvrSynthConverter {
public:
    /** @param voiceName in which the tables' search words are looked for
        @param category, subCategory names of the synth's own list, exactly
        @param keywordSearch whether search words may pick another record than the default */
    VSTK2xTvrSynthConverter(const std::string& voiceName, const std::string& category,
                            const std::string& subCategory, bool keywordSearch);
    virtual ~VSTK2xTvrSynthConverter() = default;
    VSTK2xTvrSynthConverter(const VSTK2xTvrSynthConverter&) = delete;
    VSTK2xTvrSynthConverter& operator=(const VSTK2xTvrSynthConverter&) = delete;

    /** @return 0 when all three results are set; 1 when the tables end before, with the results up
        to there set and the others as they were */
    int convertCategoryName();

    /** @return 0 with both indices set, 1 when the synth has no such category or sub-category */
    int getTavrinSynthCategorySubCategoryIndex(int* category, int* subCategory);

    /** The media browser's texts, escaped for XML; empty where nothing was found. */
    const std::string& getCategory() const { return resultCategory; }
    const std::string& getSubCategory() const { return resultSubCategory; }
    const std::string& getCharacter() const { return resultCharacter; }

private:
    const std::string voiceName;
    const std::string synthCategory;
    const std::string synthSubCategory;
    std::string resultCategory;
    std::string resultSubCategory;
    std::string resultCharacter;
    const bool keywordSearch;
};

} // namespace Vst
} // namespace Steinberg
