// VSTK2xTvrSynthConverter: finds the media browser's categories for a voice of the synth.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {

/** The constructor converts one voice; the object then holds the results. Reads constant tables
    only. [any thread] */
class VSTK2xTvrSynthConverter {
public:
    /** @param voiceName the text in which the tables' search words are looked for
        @param category, subCategory names of the synth's own lists, exactly as there
        @param keywordSearch false: always take the default record */
    VSTK2xTvrSynthConverter(const std::string& voiceName, const std::string& category,
                            const std::string& subCategory, bool keywordSearch);
    virtual ~VSTK2xTvrSynthConverter() = default;
    VSTK2xTvrSynthConverter(const VSTK2xTvrSynthConverter&) = delete;
    VSTK2xTvrSynthConverter& operator=(const VSTK2xTvrSynthConverter&) = delete;

    /** Sets the results. @return 0 when all three are set; 1 when the tables lack the category or
        the sub-category: the results that were found are set, the others unchanged */
    int convertCategoryName();

    /** @param[out] category, subCategory indices in the synth's lists; set on success only
        @return 0, or 1 when the synth has no such category or sub-category */
    int getTavrinSynthCategorySubCategoryIndex(int* category, int* subCategory);

    /** The media browser's texts, escaped for XML; empty when nothing was found. */
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
