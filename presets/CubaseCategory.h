// The media browser's categories, and the rule that picks one for a voice.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace Cubase {

/** How many sub-categories a synth category has at most, and so how long every list of lists is. */
constexpr int kSubCategoryCount = 6;
/** How many categories the synth has. */
constexpr int kCategoryCount = 18;

// Fixed tables that are read only, by any number of threads, and searched without allocating.

/** What the media browser shows for one synth sub-category. Texts are static and stand escaped for
    XML. A list of records begins with its default, which has no search words, and ends with a
    record of nulls. */
struct SubCategoryCharacter {
    const char* subCategory;
    const char* character;          ///< several joined with "|", or empty for none
    const char* const* searchWords; ///< ends with a null; null itself for a default
};

namespace Category {

/** What the media browser shows for one synth category. Texts and lists as above. */
struct CategorySubCategory {
    const char* name;
    /** kSubCategoryCount lists by the synth's sub-category; null where there is none. */
    const SubCategoryCharacter* const* subCategories;
    const char* const* searchWords; ///< ends with a null; null itself for a default
};

extern const CategorySubCategory PIANO[];
extern const CategorySubCategory KEYBOARD[];
extern const CategorySubCategory ORGAN[];
extern const CategorySubCategory GUITARPLUCKED[];
extern const CategorySubCategory BASS[];
extern const CategorySubCategory STRINGS[];
extern const CategorySubCategory BRASS[];
extern const CategorySubCategory WOODWINDS[];
extern const CategorySubCategory SYNTHLEAD[];
extern const CategorySubCategory SYNTHPAD[];
extern const CategorySubCategory SYNTHCOMP[];
extern const CategorySubCategory CHROMATICPERC[];
extern const CategorySubCategory DRUMPERC[];
extern const CategorySubCategory SOUNDFX[];
extern const CategorySubCategory MUSICALFX[];
extern const CategorySubCategory ETHNIC[];
extern const CategorySubCategory VOCODER[];
extern const CategorySubCategory OTHER[];

/** The lists above by the synth's category. */
extern const CategorySubCategory* const categoryArray[kCategoryCount];

} // namespace Category

/** Whether one of the words occurs in text, case and all; empty words occur in nothing.
    @param words ends with a null; may be null
    @return 0 when one occurs, else 1 */
int searchKeyWords(const char* const* words, const std::string& text);

/** The first record one of whose search words occurs in text.
    @param records ends with a record of nulls; may be null
    @return its index, or 0, the default's, when none does or keywordSearch is off */
int searchCategoryIndex(const Category::CategorySubCategory* records, const std::string& text,
                        bool keywordSearch);
int searchSubCategoryIndex(const SubCategoryCharacter* records, const std::string& text,
                           bool keywordSearch);

} // namespace Cubase
} // namespace Vst
} // namespace Steinberg
