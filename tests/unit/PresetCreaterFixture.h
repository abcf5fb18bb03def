// What the tests of the preset generator share.
#pragma once

#include "presets/TavrinSynthCategory.h"
#include "presets/VstK2xPresetCreater.h"
#include "tests/doubles/ScriptedLibrary.h"
#include "tests/doubles/TemporaryHome.h"

#include <gmock/gmock.h>

/** A generator, a library that knows the synth's categories, and a temporary home folder. */
class PresetCreaterTest : public testing::Test {
protected:
    using Creater = Steinberg::Vst::VstK2xPresetCreater;
    using Bank = Steinberg::Vst::VoiceBank::Bank;
    using Voices = std::map<unsigned, std::map<unsigned, std::string>>;
    using int32 = Steinberg::int32;

    PresetCreaterTest()
    {
        namespace Synth = Steinberg::Vst::TavrinSynth;
        library.categoryName = [](int32 main) -> doubles::BufferAnswer {
            if (main < 0 || main > 17)
                return {std::nullopt, 1};
            return {Synth::VoiceCategoryName[main]};
        };
        library.subCategoryName = [](int32 main, int32 sub) -> doubles::BufferAnswer {
            if (sub < 0 || sub > 5)
                return {std::nullopt, 1};
            return {Synth::VoiceSubCategoryName[main][sub]};
        };
        library.voiceData = [](int32, int32) -> doubles::BufferAnswer {
            return {"80:Sweet Violin"};
        };
        library.userBank = [](int32, int32) { return std::vector<char>{'\0', '\xFF', 'd'}; };
    }

    static constexpr auto kEverything = static_cast<Creater::PresetType>(0x1707FF);

    /** Writes the file of one voice of bank 0. */
    void writeVoice(const std::string& voiceData)
    {
        Voices voices = {{0, {{0, voiceData}}}};
        creater.setVoiceDataInfo(voices, kEverything, Creater::kUserFolder, nullptr, true, false);
    }

    /** createPresetFile in the preset folder for a voice of solo strings. */
    int createFile(const std::string& fileName, int bank, unsigned number, bool overwrite = true,
                   const std::vector<const char*>* excluded = nullptr)
    {
        return creater.createPresetFile(home.presetFolder(), "Violin", fileName, "Strings", "Solo",
                                        static_cast<Bank>(bank), number, excluded, overwrite,
                                        false);
    }

    void makeFolder()
    {
        std::string path;
        ASSERT_EQ(Creater::createOutputPath(path, Creater::kUserFolder), 0);
    }

    doubles::TemporaryHome home;
    doubles::Trace trace;
    doubles::ScriptedLibrary library{trace};
    Creater creater{library};
};
