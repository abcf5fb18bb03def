#include "tools/check-library/WatchedLibrary.h"

#include "presets/VoiceText.h"

#include <algorithm>
#include <array>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

constexpr char kUntouched = 0x5A;

} // namespace

template <typename Call>
int32 WatchedLibrary::fill(const char* operation, char* buffer, Call&& call)
{
    std::array<char, 4 * LibraryText::kSize> room{};
    std::fill(room.begin() + LibraryText::kSize, room.end(), kUntouched);
    std::copy_n(buffer, LibraryText::kSize, room.begin());
    const int32 result = call(room.data());
    std::copy_n(room.begin(), LibraryText::kSize, buffer);
    const bool untouched = std::all_of(room.begin() + LibraryText::kSize, room.end(),
                                       [](char byte) { return byte == kUntouched; });
    if (!untouched && isFirst(operation + std::string(" writes")))
        journal.say(
            bad("buffers",
                operation + std::string(" writes behind the 30 bytes that it is given, which "
                                        "destroys what the plug-in keeps there.")));
    return result;
}

bool WatchedLibrary::isFirst(const std::string& fault)
{
    const std::lock_guard<std::mutex> guard(mutex);
    return told.insert(fault).second;
}

void WatchedLibrary::sayThrown(const char* operation, const std::string& call,
                               const std::string& what)
{
    if (isFirst(operation + std::string(" throws")))
        journal.say(bad("exceptions",
                        call + " throws an exception" + what +
                            ". For the plug-in it is as if it had done nothing.",
                        kTellMaker, {{"call", call}}));
}

int32 WatchedLibrary::getCategoryName(int32 mainCategory, char* buffer)
{
    return watch("getCategoryName", watchedCallText("getCategoryName", mainCategory), [&] {
        return fill("getCategoryName", buffer,
                    [&](char* room) { return library.getCategoryName(mainCategory, room); });
    });
}

int32 WatchedLibrary::getSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer)
{
    const auto text = watchedCallText("getSubCategoryName", mainCategory, subCategory);
    return watch("getSubCategoryName", text, [&] {
        return fill("getSubCategoryName", buffer, [&](char* room) {
            return library.getSubCategoryName(mainCategory, subCategory, room);
        });
    });
}

int32 WatchedLibrary::getVoiceDataString(int32 bank, int32 number, char* buffer)
{
    return watch("getVoiceDataString", watchedCallText("getVoiceDataString", bank, number), [&] {
        return fill("getVoiceDataString", buffer,
                    [&](char* room) { return library.getVoiceDataString(bank, number, room); });
    });
}

int32 WatchedLibrary::applyUserBank(int32 bank, int32 number, const char* data, int32 size)
{
    const void* object = data; // no text
    return watch("applyUserBank", watchedCallText("applyUserBank", bank, number, object, size),
                 [&] { return library.applyUserBank(bank, number, data, size); });
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
