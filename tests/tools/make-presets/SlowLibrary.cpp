// An editor library for make-presets alone: 500 voices in bank 0 that take their time, a voice in
// bank 7 whose category is unknown, and user banks: without data in bank 8, that cannot be read in
// bank 10, whole in banks 9 and 14. Each leaves an error of the library's own files behind.
#include "editorlib/EntryPoints.h"
#include "presets/TavrinSynthCategory.h"
#include "tests/doubles/ScriptedLibrary.h"

#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace {

constexpr int kSlowVoices = 500;

doubles::BufferAnswer voice(int bank, int number)
{
    if (bank == 0 && number < kSlowVoices)
        return {"80:Slow " + std::to_string(number)};
    if (bank == 7 && number == 0)
        return {std::string("4096:Odd\x1B[2J")};
    if (bank == 7 && number == 1)
        return {std::string("no code:Odder")};
    if (bank == 8 && number == 0)
        return {std::string("80:Hollow")};
    if (bank == 10 && number == 0)
        return {std::string("80:Torn")};
    if ((bank == 9 || bank == 14) && number == 0)
        return {"80:Whole " + std::to_string(bank)};
    return {std::nullopt, 1};
}

std::vector<char> userBankData(int bank)
{
    errno = bank == 8 ? EROFS : bank == 10 ? EDQUOT : ENOSPC;
    if (bank == 10)
        throw std::runtime_error("torn");
    return std::vector<char>(bank == 8 ? 0 : 100);
}

class SlowLibrary final : public doubles::ScriptedLibrary {
public:
    SlowLibrary()
    : ScriptedLibrary(ownTrace)
    {
        namespace Synth = Steinberg::Vst::TavrinSynth;
        categoryName = [](int32 main) -> doubles::BufferAnswer {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            if (main > 17)
                return {std::nullopt, 1};
            return {Synth::VoiceCategoryName[main]};
        };
        subCategoryName = [](int32 main, int32 sub) -> doubles::BufferAnswer {
            return {Synth::VoiceSubCategoryName[main][sub]};
        };
        voiceData = [](int32 bank, int32 number) { return voice(bank, number); };
        userBank = [](int32 bank, int32) { return userBankData(bank); };
    }

private:
    doubles::Trace ownTrace;
};

} // namespace

extern "C" __attribute__((visibility("default"))) void
getVSTEditorConnectObject(Steinberg::Vst::VstIEditorConnect** out)
{
    static SlowLibrary library;
    *out = &library;
}
