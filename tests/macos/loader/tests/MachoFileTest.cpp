// What the loader reads of a Mach-O file, and that it refuses with a word what it does not know.
#include "tests/macos/loader/tests/MadeFile.h"

#include <functional>
#include <gmock/gmock.h>

namespace {

using namespace macho;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using Bytes = MachoFile::Bytes;

/** The word of the error; empty when there is none. */
std::string errorOf(const std::function<void()>& act)
{
    try {
        act();
    } catch (const LoadError& error) {
        return error.what();
    }
    return {};
}

std::string errorOf(const MadeFile& made)
{
    return errorOf([&] {
        const MachoFile file(made.bytes());
        file.rebases();
        file.binds();
        file.exports();
    });
}

/** A universal file with one part for the processor, at byte 64. */
Bytes universal(uint32_t processor, const Bytes& part, uint32_t size)
{
    Bytes result;
    for (const uint32_t word : {0xCAFEBABEu, 1u, processor, 0u, 64u, size, 0u})
        for (const int shift : {24, 16, 8, 0})
            result.push_back(static_cast<uint8_t>(word >> shift));
    result.resize(64);
    result.insert(result.end(), part.begin(), part.end());
    return result;
}

TEST(MachoFile, TakesTheProcessorsPartOfAUniversalFile)
{
    const Bytes part = {1, 2, 3};
    EXPECT_EQ(MachoFile::sliceOf(universal(0x0100000C, part, 3), Processor::kArm64), part);
    EXPECT_THAT(
        errorOf([&] { MachoFile::sliceOf(universal(0x0100000C, part, 3), Processor::kX86_64); }),
        HasSubstr("nothing in the file is for this processor"));
    EXPECT_THAT(
        errorOf([&] { MachoFile::sliceOf(universal(0x0100000C, part, 4), Processor::kArm64); }),
        HasSubstr("ends before its part"));
}

TEST(MachoFile, ReadsSegmentsAndSections)
{
    const MachoFile file(MadeFile().bytes());
    ASSERT_EQ(file.segments().size(), 3u);
    EXPECT_EQ(file.span(), 3 * MadeFile::kPage);
    EXPECT_TRUE(file.segments()[0].isExecutable);
    EXPECT_FALSE(file.segments()[0].isWritable);
    EXPECT_TRUE(file.segments()[2].isWritable);
    ASSERT_NE(file.section("__data"), nullptr);
    EXPECT_EQ(file.section("__data")->address, MadeFile::kData);
    EXPECT_FALSE(file.section("__data")->hasInitialisers);
    EXPECT_EQ(file.section("__text"), nullptr);
}

TEST(MachoFile, RefusesWhatIsNoBundleForTheProcessor)
{
    MadeFile made;
    made.size = 3;
    EXPECT_THAT(errorOf(made), HasSubstr("ends too early"));
    made.size = 31;
    EXPECT_THAT(errorOf(made), Not(IsEmpty()));
    struct Row {
        size_t offset;
        uint32_t word;
        const char* expected;
    };
    for (const Row& row : {Row{0, 0xFEEDFACE, "no Mach-O file"}, Row{4, 7, "another processor"},
                           Row{12, 6, "no bundle"}, Row{20, 0x10000, "before its load commands"},
                           Row{36, 4, "impossible size"}, Row{36, 0x7FFFFFFF, "impossible size"}}) {
        MadeFile other;
        other.words = {{row.offset, row.word}};
        EXPECT_THAT(errorOf(other), HasSubstr(row.expected));
    }
}

TEST(MachoFile, RefusesAnUnknownLoadCommand)
{
    MadeFile made;
    made.commands = {MadeFile::command(0x1B)}; // LC_UUID, which says nothing to a loader
    EXPECT_THAT(errorOf(made), IsEmpty());
    made.commands = {MadeFile::command(0x22)}; // LC_DYLD_INFO, which may have other fixups beside
    EXPECT_THAT(errorOf(made), HasSubstr("unknown load command 0x22"));
}

TEST(MachoFile, RefusesChainedFixups)
{
    MadeFile made;
    made.commands = {MadeFile::command(0x80000034)};
    EXPECT_THAT(errorOf(made), HasSubstr("chained fixups"));
}

TEST(MachoFile, RefusesSegmentsThatAreCutShortOrOutOfPlace)
{
    MadeFile made;
    made.size = 3 * MadeFile::kPage - 1;
    EXPECT_THAT(errorOf(made), HasSubstr("before segment __DATA does"));
    MadeFile larger;
    larger.dataFileSize = MadeFile::kPage + 1;
    EXPECT_THAT(errorOf(larger), HasSubstr("before segment __DATA does"));
    MadeFile elsewhere;
    elsewhere.dataAddress = MadeFile::kConstants;
    EXPECT_THAT(errorOf(elsewhere), HasSubstr("does not follow"));
}

TEST(MachoFile, RefusesSectionsThatItDoesNotKnow)
{
    MadeFile made;
    for (const uint32_t type : {0x0Au, 0x11u, 0x13u, 0x16u}) { // finalisers, thread-local variables
        made.sectionType = type;
        EXPECT_THAT(errorOf(made), HasSubstr("section __data is of the unknown kind")) << type;
    }
    made.sectionType = 9;
    EXPECT_TRUE(MachoFile(made.bytes()).section("__data")->hasInitialisers);
}

TEST(MachoFile, ReadsEveryFormOfRebase)
{
    MadeFile made;
    made.rebases = {0x11, 0x22, 8,    // pointers, at segment 2 and 8
                    0x51,             // one
                    0x41,             // 8 on
                    0x60, 2,          // two
                    0x30, 0x80, 0x02, // 256 on
                    0x70, 24,         // one, and 24 on
                    0x80, 2,    8,    // two, each 8 on
                    0x00, 0xFF};      // done
    const auto at = [](uint64_t offset) { return MadeFile::kData + offset; };
    EXPECT_THAT(MachoFile(made.bytes()).rebases(),
                ElementsAre(at(8), at(24), at(32), at(296), at(328), at(344)));
}

TEST(MachoFile, RefusesRebasesThatItDoesNotKnow)
{
    struct Row {
        Bytes opcodes;
        const char* expected;
    };
    for (const Row& row :
         {Row{{0x90}, "unknown rebase opcode 0x90"}, Row{{0x12}, "something else than a pointer"},
          Row{{0x51}, "outside"}, Row{{0x23, 0}, "segment that does not exist"},
          Row{{0x20, 0, 0x51}, "outside of the image's data"}, // text
          Row{{0x22, 0xF9, 0x1F, 0x51}, "outside"},            // the last 7 bytes of the data
          Row{{0x22, 0x80}, "end in the middle"},
          Row{{0x22, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 1}, "64 bits"}}) {
        MadeFile made;
        made.rebases = row.opcodes;
        EXPECT_THAT(errorOf(made), HasSubstr(row.expected));
    }
}

std::vector<std::string> textsOf(const std::vector<Bind>& binds)
{
    std::vector<std::string> texts;
    for (const auto& bind : binds)
        texts.push_back(bind.symbol + (bind.isWeak ? "?" : "") + " " +
                        std::to_string(bind.address) + " " + std::to_string(bind.addend));
    return texts;
}

TEST(MachoFile, ReadsEveryFormOfBind)
{
    MadeFile made;
    made.binds = {0x11, 0x40, '_',  'a',  0,   0x51, 0x71, 0, // _a at segment 1
                  0x90, 0xA0, 8,    0xB1,                     // at 0, at 8 and 8 on, at 24 and 8 on
                  0x60, 0x7E, 0x41, '_',  'b', 0,    0xC0, 2, 16, // _b - 2, may be missing, two
                  0x00};
    made.lazyBinds = {0x72, 0, 0x13, 0x40, '_', 'c', 0, 0x90, 0x00,
                      0x72, 8, 0x13, 0x40, '_', 'd', 0, 0x90, 0x00};
    EXPECT_THAT(textsOf(MachoFile(made.bytes()).binds()),
                ElementsAre("_a 4096 0", "_a 4104 0", "_a 4120 0", "_b? 4136 -2", "_b? 4160 -2",
                            "_c 8192 0", "_d 8200 0"));
}

TEST(MachoFile, RefusesBindsThatItDoesNotKnow)
{
    struct Row {
        Bytes opcodes;
        const char* expected;
    };
    for (const Row& row :
         {Row{{0xD0, 0}, "unknown bind opcode 0xd0"}, // BIND_OPCODE_THREADED: chained fixups
          Row{{0xF0}, "unknown bind opcode"}, Row{{0x52}, "something else than a pointer"},
          Row{{0x72, 0, 0x90}, "without a symbol"}, Row{{0x40, '_', 'a', 0, 0x90}, "outside"},
          Row{{0x40, '_', 'a'}, "end in the middle"}}) {
        MadeFile made;
        made.binds = row.opcodes;
        EXPECT_THAT(errorOf(made), HasSubstr(row.expected));
    }
}

TEST(MachoFile, ReadsTheExports)
{
    MadeFile made;
    made.exports = {0, 1, '_',  0,    5,                   // "_", and on at 5
                    0, 2, 'a',  0,    14, 'b', 'c', 0, 18, // "_a" at 14, "_bc" at 18
                    2, 0, 0x10, 0,                         // 0x10, nothing behind
                    3, 0, 0x80, 0x20, 0};                  // 0x1000
    EXPECT_THAT(MachoFile(made.bytes()).exports(),
                ElementsAre(Pair("_a", 0x10), Pair("_bc", 0x1000)));
}

TEST(MachoFile, RefusesExportsThatItDoesNotKnow)
{
    struct Row {
        Bytes list;
        const char* expected;
    };
    for (const Row& row : {Row{{0, 1, 'a', 0, 0}, "leads into itself"},
                           Row{{0, 1, 'a', 0, 9}, "leads out of itself"},
                           Row{{2, 8, 0, 0}, "no plain address"}, // re-exported
                           Row{{4, 0, 0x80, 0x80, 0x01, 0}, "outside of the image"},
                           Row{{0, 1, 'a'}, "end in the middle"}}) {
        MadeFile made;
        made.exports = row.list;
        EXPECT_THAT(errorOf(made), HasSubstr(row.expected));
    }
}

} // namespace
