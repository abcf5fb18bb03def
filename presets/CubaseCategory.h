// The media browser's categories, and the functions that choose one for a voice.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace Cubase {

/** How many sub-categories a synth category has at most: the size of each array by sub-category. */
constexpr int kSubCategoryCount = 6;
/** How many categories the synth has. */
constexpr int kCategoryCount = 18;

// The tables are constant: any number of threads may use them, and a search allocates nothing.

/** What the media browser shows for one synth sub-category. The texts are static and already
    escaped for XML. A list of records begins with the default, which has no search words, and ends
    with a record of nulls. */
struct SubCategoryCharacter {
    const char* subCategory;
    const char* character;          ///< several are joined with "|"; empty for none
    const char* const* searchWords; ///< an array that ends with null; null for the default
};

namespace Category {

/** What the media browser shows for one synth category. Texts and lists as above. */
struct CategorySubCategory {
    const char* name;
    /** kSubCategoryCount lists, by the synth's sub-category; null where it has none. */
    const SubCategoryCharacter* const* subCategories;
    const char* const* searchWords; ///< an array that ends with null; null for the default
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

/** Whether one of the words occurs in text, with the same case. Empty words are ignored.
    @param words an array that ends with null; may be null
    @return 0 when one occurs, else 1 */
int searchKeyWords(const char* const* words, const std::string& text);

/** Finds the first record that has a search word which occurs in text.
    @param records ends with a record of nulls; may be null
    @param keywordSearch false: do not search
    @return its index; 0, which is the default's, when there is none or nothing is searched */
int searchCategoryIndex(const Category::CategorySubCategory* records, const std::string& text,
                        bool keywordSearch);
int searchSubCategoryIndex(const SubCategoryCharacter* records, const std::string& text,
                           bool keywordSearch);

} // namespace Cubase
} // namespace Vst
} // namespace Steinberg
