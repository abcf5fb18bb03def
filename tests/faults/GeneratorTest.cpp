// VstK2xPresetCreater writes preset files from a map of voices while library and file system fail.
#include "tests/faults/generator/Generator.h"
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/PresetXml.h"
#include "tests/doubles/TemporaryHome.h"
#include "tests/faults/OwnCode.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using doubles::BufferAnswer;
using doubles::le32;
using doubles::presetFileBytes;
using doubles::presetXml;
using Steinberg::Vst::tools::LibraryHandle;
using testing::IsEmpty;

/** The generator's file, loaded once for all tests. */
const LibraryHandle& generatorFile()
{
    static const LibraryHandle loaded = [] {
        LibraryHandle file(GENERATOR_FILE, RTLD_NOW);
        EXPECT_TRUE(file) << file.refusal();
        learnOwnCode(GENERATOR_FILE);
        return file;
    }();
    return loaded;
}

/** Good and bad texts. Both voices named "Grand" have the same file, which the first one writes. A
    name with a zero byte gets no file. */
Voices hostileVoices()
{
    Voices voices;
    voices[0] = {{0, "0:x:Grand"},
                 {1, "no code:x:Lost"},
                 {2, "0:A/B:C?"},
                 {3, std::string("0:a\0b", 5)},
                 {4, "99999999999999999999:x:Lost"},
                 {5, "0:x:Grand"},
                 {6, "0:x:Left Out"}};
    voices[8] = {{5, "17:x:My/Bank"}};
    voices[15] = {{0, "0:x:No Bank"}};
    return voices;
}

std::string voiceFile(int number)
{
    return presetFileBytes(le32(1) + le32(0) + le32(number),
                           presetXml("Piano", "A. Piano", "Acoustic"));
}

/** For each file's name the contents that it may have, the usual one first. */
using Files = std::map<std::string, std::set<std::string>>;

const Files& wholeFiles()
{
    static const Files files = {{"Grand.vstpreset", {voiceFile(0), voiceFile(5)}},
                                {"C_.vstpreset", {voiceFile(2)}},
                                {"My_Bank.vstpreset",
                                 {presetFileBytes(le32(2) + le32(8) + le32(5) + le32(3) + "abc",
                                                  presetXml("Keyboard", "E. Piano", "Electric"))}}};
    return files;
}

class WritingVoices : public Scenario {
public:
    void setUp() override
    {
        write = generatorFile().find<decltype(&writeVoices)>("writeVoices");
        ASSERT_TRUE(write);
        wholeFiles(); // made before objects are counted
        world.library.categoryName = [](int main) {
            return BufferAnswer{main == 0 ? "Acoustic Piano" : "Keyboard", 0};
        };
        world.library.subCategoryName = [](int main, int) {
            return BufferAnswer{main == 0 ? "Acoustic" : "FM Piano", 0};
        };
        world.library.userBank = [](int, int) { return std::vector<char>{'a', 'b', 'c'}; };
    }
    void tearDown() override {}

    void act() override
    {
        std::filesystem::remove_all(home.home() + "/Library");
        const std::vector<const char*> excluded = {nullptr, "Left Out"};
        world.step("write", [&] { write(world.library, voices, excluded); });
        found.clear();
        for (const auto& name : home.files())
            found[name] = home.content(name);
    }

    void expectDone() override
    {
        EXPECT_EQ(found.size(), wholeFiles().size());
        for (const auto& [name, contents] : wholeFiles())
            EXPECT_EQ(found[name], *contents.begin()) << name;
    }

    /** Only one file is missing, unless the folder is missing or disk or memory stay full. */
    void expectStated(const Fault& fault) override
    {
        size_t whole = 0;
        for (const auto& [name, content] : found) {
            const auto known = wholeFiles().find(name);
            ASSERT_NE(known, wholeFiles().end()) << name;
            whole += known->second.count(content);
        }
        const bool isLasting = fault.is(Kind::kDiskFull) || fault.is(Kind::kNoMoreMemory);
        const bool isFolderless = fault.hit("mkdir") || (found.empty() && fault.isOutOfMemory());
        if (isFolderless) {
            EXPECT_THAT(found, IsEmpty());
        } else if (!isLasting) {
            EXPECT_GE(whole, wholeFiles().size() - 1);
        }
        if (fault.hit("getUserBankData")) {
            EXPECT_EQ(found["My_Bank.vstpreset"], "");
        }
    }

    /** A voice whose category is unknown is still written. */
    void expectBelieved(const Fault& fault) override
    {
        for (const auto& [name, contents] : wholeFiles())
            EXPECT_EQ(found.count(name), 1u) << name;
        EXPECT_EQ(found.size(), wholeFiles().size());
        if (fault.hit("getUserBankData") && fault.is(Kind::kLibraryEmptyText)) {
            EXPECT_EQ(found["My_Bank.vstpreset"], "");
        }
    }

private:
    decltype(&writeVoices) write = nullptr;
    doubles::TemporaryHome home;
    Voices voices = hostileVoices();
    std::map<std::string, std::string> found;
};

/** The generator's result for one file, and the file itself. */
class WritingOneVoice : public Scenario {
public:
    explicit WritingOneVoice(int whichBank)
    : bank(whichBank)
    {
    }

    void setUp() override
    {
        write = generatorFile().find<decltype(&writeVoice)>("writeVoice");
        ASSERT_TRUE(write);
        world.library.userBank = [](int, int) { return std::vector<char>{'a', 'b', 'c'}; };
        const auto state = bank == 8 ? le32(2) + le32(8) + le32(5) + le32(3) + "abc"
                                     : le32(1) + le32(bank) + le32(5);
        whole = presetFileBytes(state, presetXml("Piano", "A. Piano", "Acoustic"));
    }
    void tearDown() override {}

    void act() override
    {
        std::filesystem::create_directories(home.presetFolder());
        std::filesystem::remove(home.presetFolder() + "/Grand.vstpreset");
        const auto folder = home.presetFolder();
        world.step("write", [&] { result = write(world.library, folder, bank); });
        found = home.content("Grand.vstpreset");
    }

    void expectDone() override
    {
        EXPECT_EQ(result, 0);
        EXPECT_EQ(found, whole);
    }

    /** The result 0, "written", is given for whole files only. */
    void expectStated(const Fault& fault) override
    {
        if (result == 0) {
            EXPECT_EQ(found, whole);
            return;
        }
        if (fault.hit("getUserBankData") || fault.hit("fwrite") || fault.hit("fseek")) {
            EXPECT_EQ(result, 1);
        } else if (fault.hit("fopen")) {
            EXPECT_EQ(result, 3);
        }
    }

    void expectBelieved(const Fault& fault) override
    {
        EXPECT_EQ(result, fault.is(Kind::kLibraryEmptyText) ? 1 : 0);
    }

private:
    const int bank;
    decltype(&writeVoice) write = nullptr;
    doubles::TemporaryHome home;
    std::string whole;
    std::string found;
    int result = -1;
};

TEST(Faults, CreatePresetFile)
{
    injectFaults("one preset file", scenario<WritingOneVoice>(0));
    injectFaults("one user bank file", scenario<WritingOneVoice>(8));
}

TEST(Faults, SetVoiceDataInfo)
{
    injectFaults<WritingVoices>("preset library");
}

} // namespace
} // namespace faults
