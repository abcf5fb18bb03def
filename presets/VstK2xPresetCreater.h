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
/** The bytes that no file name of ours holds, in the order in which they are looked for. */
inline constexpr char searchNotFilenameLang_ch[] = "\\/,:*?\"<>|";

/** One file a voice, or one a user bank, each with the attributes that the media browser sorts by.
    Silent: nothing is shown or logged, and nothing here throws; a library call that throws is one
    that failed.

    A voice is a text of fields parted by ":". The first is the category code in decimal, main
    category times 16 plus sub-category; the last is the voice's name; those between are not read.

    The name never reaches the attributes, only the file name, and the attributes' values come from
    the category tables alone, which hold them escaped for XML. So a name or a library's category
    with markup in it cannot break a file: an unknown category gives empty values.

    Runs on the thread that calls it, which is any thread of the library's for a user bank, and
    shares nothing between objects. */
class VstK2xPresetCreater {
public:
    /** Which banks to write, one bit each; several are or-ed together. */
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

    /** Below which folder the library goes. */
    enum OutputDir : int {
        kSystemFolder = 0, ///< the machine's, for every user
        kUserFolder = 1,   ///< the user's home, from the environment variable HOME
    };

    /** What createPresetFile says. */
    enum FileResult : int {
        kWritten = 0,
        kNotWritten = 1, ///< stands already, no such bank, an empty bank, or the save failed
        kExcluded = 2,
        kNotOpened = 3, ///< the folder or the file
    };

    /** @param connect the library, which outlives this object */
    explicit VstK2xPresetCreater(VstIEditorConnect& connect);

    /** Writes one voice's file over any of that name, if its bank is among types. The folder is
        made in any case. */
    void setVoiceDataInfo(VoiceBank::Bank bank, int number, PresetType types,
                          OutputDir dir) noexcept;

    /** Writes the files of all voices whose bank is among types, in ascending order, and goes on
        past those that fail. An empty map does nothing at all.
        @param voices voice texts by bank and number; not changed
        @param excluded file names without folder and extension, or null; nulls in it are skipped
        @param overwrite whether files that stand already are replaced */
    void setVoiceDataInfo(std::map<unsigned, std::map<unsigned, std::string>>& voices,
                          PresetType types, OutputDir dir, const std::vector<const char*>* excluded,
                          bool overwrite, bool) noexcept;

    /** Sets path to the library's folder.
        @return 0, or 1 with path as it was for another dir or a user without a home */
    static int outputPath(std::string& path, OutputDir dir) noexcept;

    /** The same, and makes what is missing of the folder. @return 1 also where it cannot */
    static int createOutputPath(std::string& path, OutputDir dir) noexcept;

    /** The opposite of its name: true when the bank is not among the types last set. */
    bool isCreatePresetBank(VoiceBank::Bank bank) const noexcept;

    /** The bank's bit; kNoBank for what is no bank. */
    static PresetType bankToPresetType(VoiceBank::Bank bank) noexcept;

    /** Reads the library's text of a voice into voiceData. @return 0 on success, 1 on failure */
    int fetchVoiceData(VoiceBank::Bank bank, int number, std::string& voiceData) noexcept;

    /** Splits a voice's text and asks the library for the names of its categories.
        @param fileName the voice's name with "_" for what a file name cannot hold
        @return 0, or 1 with voiceName and fileName set and the categories as they were */
    int separationVoiceData(const std::string& voiceData, std::string& fileName,
                            std::string& voiceName, std::string& category,
                            std::string& subCategory) noexcept;

    /** Writes the file path/fileName.vstpreset.
        @param category, subCategory the synth's own names
        @param number the voice in its bank, or what a user bank is numbered with
        @param excluded, overwrite as above
        @return a FileResult. A bank that is none, or a user bank without data, leaves an empty
        file. errno tells why an open or a write failed; the library's calls do not change it */
    int createPresetFile(const std::string& path, const std::string& voiceName,
                         const std::string& fileName, const std::string& category,
                         const std::string& subCategory, VoiceBank::Bank bank, unsigned number,
                         const std::vector<const char*>* excluded, bool overwrite, bool) noexcept;

    /** Replaces every byte of text that a file name cannot hold by "_". */
    static void changeNotFileNameLang(std::string& text) noexcept;
    /** Where the first such byte is, in the order of searchNotFilenameLang_ch; -1 for nowhere. */
    static int searchNotFilenameLang(const std::string& text) noexcept;
    /** Replaces the first from in text. @return 0 when there was one, else 1 */
    static int replaceString(std::string& text, const std::string& from, const std::string& to);

    /** platform::createFolder without its exceptions. */
    static int createPresetDirectoryMac(const std::string& path, FSRef* ref) noexcept;

    /** The media browser's texts for a voice of the synth's categories; empty where there is none.
        Banks of single voices may be told apart by words in their name, user banks not. Always
        0. */
    static int convertCubaseCategoryName(const std::string& voiceName, const std::string& category,
                                         const std::string& subCategory, std::string& outCategory,
                                         std::string& outSubCategory, std::string& outCharacter,
                                         VoiceBank::Bank bank);

private:
    /** createPresetFile of a name that is not excluded. */
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
