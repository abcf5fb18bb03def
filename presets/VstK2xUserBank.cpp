#include "presets/VstK2xUserBank.h"

#include "basics/CallGuard.h"

namespace Steinberg {
namespace Vst {
namespace {

constexpr int32 kUserBankMarker = 2;

} // namespace

VstK2xUserBank::VstK2xUserBank(IBStream* target)
: PresetChunkFile(target)
{
}

bool VstK2xUserBank::saveUserBank(IBStream* stream, const FUID& classID, int bank, int number,
                                  int size, void* data, const char* xml, int xmlSize) noexcept
{
    return guarded(false, [&] {
        VstK2xUserBank file(stream);
        return file.writeFront(classID) &&
               file.storeEditControllerUserBankData(bank, number, size, data) &&
               file.writeBack(xml, xmlSize);
    });
}

bool VstK2xUserBank::storeComponentUserBankData(int /*bank*/, int /*number*/, int /*size*/,
                                                void* /*data*/)
{
    writeEmptyComponentState();
    return true;
}

bool VstK2xUserBank::storeEditControllerUserBankData(int bank, int number, int size, void* data)
{
    if (size < 1 || !data)
        return false;
    Entry entry = {};
    if (!stream || !beginChunk(entry, kControllerState))
        return true;
    writeInt32(kUserBankMarker);
    writeInt32(bank);
    writeInt32(number);
    writeInt32(size);
    stream->write(data, size, nullptr);
    endChunk(entry);
    return true;
}

bool VstK2xUserBank::loadUserBank(IBStream* stream, const FUID& /*classID*/, int& bank, int& number,
                                  int& size, std::vector<char>& data) noexcept
{
    return guarded(false, [&] {
        VstK2xUserBank chunk(stream);
        return chunk.restoreEditControllerUserBankData(bank, number, size, data);
    });
}

bool VstK2xUserBank::restoreEditControllerUserBankData(int& bank, int& number, int& size,
                                                       std::vector<char>& data)
{
    bank = -1;
    number = -1;
    size = 0;
    if (!stream)
        return false;
    int32 marker = -1;
    readField(marker);
    if (marker != kUserBankMarker)
        return false;
    readField(bank);
    readField(number);
    readField(size);
    if (size < 1)
        return false;
    // Cleared first: resize then makes all bytes zero, so that none is old if the stream
    // ends early.
    data.clear();
    data.resize(static_cast<size_t>(size));
    stream->read(data.data(), size, nullptr);
    return true;
}

bool VstK2xUserBank::isK2xUserBank(IBStream* stream) noexcept
{
    return peekMarker(stream) == kUserBankMarker;
}

} // namespace Vst
} // namespace Steinberg
