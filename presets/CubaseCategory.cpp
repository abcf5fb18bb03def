#include "presets/CubaseCategory.h"

namespace Steinberg {
namespace Vst {
namespace Cubase {
namespace {

bool isEnd(const Category::CategorySubCategory& record)
{
    return !record.name && !record.subCategories && !record.searchWords; // untaken: whole-records
}

bool isEnd(const SubCategoryCharacter& record)
{
    return !record.subCategory && !record.character && !record.searchWords;
}

template <typename Record>
int searchIndex(const Record* records, const std::string& text, bool keywordSearch)
{
    if (!records || !keywordSearch)
        return 0;
    for (int index = 0; !isEnd(records[index]); ++index)
        if (searchKeyWords(records[index].searchWords, text) == 0)
            return index;
    return 0;
}

} // namespace

int searchKeyWords(const char* const* words, const std::string& text)
{
    if (!words)
        return 1;
    for (; *words; ++words)
        if (**words != '\0' && text.find(*words) != std::string::npos)
            return 0;
    return 1;
}

int searchCategoryIndex(const Category::CategorySubCategory* records, const std::string& text,
                        bool keywordSearch)
{
    return searchIndex(records, text, keywordSearch);
}

int searchSubCategoryIndex(const SubCategoryCharacter* records, const std::string& text,
                           bool keywordSearch)
{
    return searchIndex(records, text, keywordSearch);
}

} // namespace Cubase
} // namespace Vst
} // namespace Steinberg
