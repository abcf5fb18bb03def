#include "simulator/UserBanks.h"

#include "editorlib/VoiceBank.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

// Contains every byte value, and is different for each slot.
std::vector<char> factoryData(int32 bank, int32 number)
{
    std::vector<char> data{'U', 'B', static_cast<char>(bank), static_cast<char>(number)};
    for (int32 index = 0; index < 512; ++index)
        data.push_back(static_cast<char>((index * 7 + bank * 16 + number) & 0xFF));
    return data;
}

} // namespace

bool UserBanks::isUserBank(int32 bank)
{
    return bank == VoiceBank::kUser1 || bank == VoiceBank::kUser2 || bank == VoiceBank::kUser3 ||
           bank == VoiceBank::kUser4;
}

bool UserBanks::isSlot(int32 bank, int32 number)
{
    return isUserBank(bank) && number >= 0 && number < slots;
}

std::vector<char> UserBanks::get(int32 bank, int32 number) const
{
    if (!isSlot(bank, number))
        return {};
    const std::lock_guard<std::mutex> guard(mutex);
    const auto found = contents.find({bank, number});
    return found != contents.end() ? found->second : factoryData(bank, number);
}

bool UserBanks::put(int32 bank, int32 number, std::vector<char> data)
{
    if (!isSlot(bank, number) || data.empty())
        return false;
    const std::lock_guard<std::mutex> guard(mutex);
    contents[{bank, number}] = std::move(data);
    return true;
}

std::map<UserBanks::Slot, std::vector<char>> UserBanks::loaded() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return contents;
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
