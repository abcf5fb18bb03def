// VstK2xPresetCreater: writes the synthesizer's voices as a library of preset files.
#pragma once

#include "editorlib/VoiceBank.h"
#include "platform/PresetFolders.h"

#include <map>
#include <string>
#include <vector>

namespace Steinberg {

class IBStream;

namespace Vst {

class VstIEditorConnect;

inline constexpr char PathSlash[] = "/";
inline constexpr char VSTPresetDirName[] = "/Presets";
/** The bytes that must not be in a file name, in the order in which they are looked for. */
inline constexpr char searchNotFilenameLang_ch[] = "\\/,:*?\"<>|";

/** Writes one file for each voice and for each user bank, with the attributes by which the media
    browser sorts. Nothing is shown or logged, and nothing throws: a call of the library that throws
    counts as one that failed.

    The library describes a voice by a text with fields between ":". The first field is the category
    code, a decimal number: main category times 16 plus sub-category. The last is the voice's name.
    Those between are not read.

    All values in the attributes come from the category tables, which have them escaped for XML. The
    voice's name is used for the file's name only, and an unknown category gives empty values. So no
    text of the library can make the XML invalid.

    Objects share nothing. [any thread; one at a time for each object] */
class VstK2xPresetCreater {
public:
    /** The banks to write, one bit each. */
    enum PresetType : unsigned {
        kNoBank = 0,
        kBank0 = 0x1,
        kBank1 = 0x2,
        kBank2 = 0x4,
        kBank3 = 0x8,
        kBank4 = 0x10,
        kBank5 = 0x20,
        kBank6 = 0x40,
        kBank7 = 0x80,
        kBank11 = 0x100,
        kBank12 = 0x200,
        kBank13 = 0x400,
        kUserBank8 = 0x10000,
        kUserBank9 = 0x20000,
        kUserBank10 = 0x40000,
        kUserBank14 = 0x100000,
        kAllVoiceBanks = 0x7FF,
        kAllUserBanks = 0x170000,
    };

    /** Where the folder of the preset library is. */
    enum OutputDir : int {
        kSystemFolder = 0, ///< in /Library, for all users
        kUserFolder = 1,   ///< in the user's home, which the environment variable HOME names
    };

    /** The results of createPresetFile. */
    enum FileResult : int {
        kWritten = 0,
        kNotWritten = 1, ///< it exists already, the bank is empty or unknown, or writing failed
        kExcluded = 2,
        kNotOpened = 3, ///< the folder was not found, or the file could not be opened
    };

    /** @param connect the library, which outlives this object */
    explicit VstK2xPresetCreater(VstIEditorConnect& connect);

    /** Writes the file of one voice, or of one user bank, if its bank is among types. Replaces a
        file of that name. Makes the folder in any case. */
    void setVoiceDataInfo(VoiceBank::Bank bank, int number, PresetType types,
                          OutputDir dir) noexcept;

    /** Writes the files of all voices whose bank is among types, in ascending order. When one fails
        it goes on with the next. Does nothing for an empty map.
        @param voices the voices' texts by bank and number; not changed
        @param excluded file names without folder and extension; may be null and contain nulls
        @param overwrite whether existing files are replaced */
    void setVoiceDataInfo(std::map<unsigned, std::map<unsigned, std::string>>& voices,
                          PresetType types, OutputDir dir, const std::vector<const char*>* excluded,
                          bool overwrite, bool) noexcept;

    /** Sets path to the folder of the preset library.
        @return 0; or 1, with path unchanged, for another value of dir and when HOME is not set */
    static int outputPath(std::string& path, OutputDir dir) noexcept;

    /** As outputPath, and makes the folder with its missing parents. @return 1 also when
        that fails */
    static int createOutputPath(std::string& path, OutputDir dir) noexcept;

    /** True when the bank is NOT among the types of the last setVoiceDataInfo: the opposite of
        its name. */
    bool isCreatePresetBank(VoiceBank::Bank bank) const noexcept;

    /** The bank's bit; kNoBank for an unknown bank. */
    static PresetType bankToPresetType(VoiceBank::Bank bank) noexcept;

    /** Reads the library's text of a voice into voiceData. @return 0 on success, 1 on failure */
    int fetchVoiceData(VoiceBank::Bank bank, int number, std::string& voiceData) noexcept;

    /** Splits a voice's text and asks the library for the names of its categories.
        @param[out] fileName the voice's name with "_" for each byte that a file name cannot have
        @return 0 on success; 1 with voiceName and fileName set, but not always the categories */
    int separationVoiceData(const std::string& voiceData, std::string& fileName,
                            std::string& voiceName, std::string& category,
                            std::string& subCategory) noexcept;

    /** Writes the file path/fileName.vstpreset.
        @param category, subCategory the synth's own names
        @param number of the voice in its bank, or of the user bank
        @param excluded, overwrite as in setVoiceDataInfo
        @return a FileResult. For an unknown bank and a user bank without data the file is left
        empty. After a failure to open or write, errno tells why; calls of the library do not
        change it */
    int createPresetFile(const std::string& path, const std::string& voiceName,
                         const std::string& fileName, const std::string& category,
                         const std::string& subCategory, VoiceBank::Bank bank, unsigned number,
                         const std::vector<const char*>* excluded, bool overwrite, bool) noexcept;

    /** Replaces every byte of searchNotFilenameLang_ch in text by "_". */
    static void changeNotFileNameLang(std::string& text) noexcept;
    /** The first position in text of the first byte of searchNotFilenameLang_ch that occurs; -1
        when none does. */
    static int searchNotFilenameLang(const std::string& text) noexcept;
    /** Replaces the first occurrence of from in text. @return 0, or 1 when there is none */
    static int replaceString(std::string& text, const std::string& from, const std::string& to);

    /** platform::createFolder, but without exceptions: 1 when memory ran out. */
    static int createPresetDirectoryMac(const std::string& path, FSRef* ref) noexcept;

    /** Finds the media browser's texts for a voice; those that it has not are empty. Looks for
        search words in the names of single voices, not in those of user banks. Always 0. */
    static int convertCubaseCategoryName(const std::string& voiceName, const std::string& category,
                                         const std::string& subCategory, std::string& outCategory,
                                         std::string& outSubCategory, std::string& outCharacter,
                                         VoiceBank::Bank bank);

private:
    /** createPresetFile for a name that is not excluded. */
    int writePresetFile(const std::string& path, const std::string& voiceName,
                        const std::string& fileName, const std::string& category,
                        const std::string& subCategory, VoiceBank::Bank bank, unsigned number,
                        bool overwrite) noexcept;
    bool save(IBStream* stream, VoiceBank::Bank bank, int number, const std::string& xml);
    bool build(IBStream* stream, VoiceBank::Bank bank, int number, const std::string& xml);
    bool isAsked(VoiceBank::Bank bank) const noexcept;

    VstIEditorConnect& editorConnect;
    PresetType presetTypes = kNoBank;
};

} // namespace Vst
} // namespace Steinberg
