// What check-library reads of a file without loading it.
#include "tools/check-library/LibraryFile.h"

#include <gmock/gmock.h>

using namespace Steinberg::Vst::checklibrary;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/** What readHeader makes of a file with these bytes. */
LibraryFile header(const std::string& bytes)
{
    LibraryFile file;
    readHeader(bytes, file);
    return file;
}

/** A file of this system's format with code for these machines. */
LibraryFile fileFor(const std::vector<std::string>& machines)
{
    LibraryFile file;
    file.path = "/somewhere/library";
    file.place = LibraryFile::Place::file;
    file.size = 1000;
    file.format = ownFormat();
    file.machines = machines;
    return file;
}

/** Numbers of four bytes, the most significant first. */
std::string words(std::initializer_list<unsigned> numbers)
{
    std::string bytes;
    for (const auto number : numbers)
        for (const unsigned shift : {24U, 16U, 8U, 0U})
            bytes += static_cast<char>(number >> shift & 0xFFU);
    return bytes;
}

constexpr unsigned kUniversal = 0xCAFEBABE;
constexpr unsigned kIntel = 0x01000007;
constexpr unsigned kArm = 0x0100000C;

} // namespace

TEST(LibraryFile, ReadHeaderKnowsTheMachinesOfAUniversalFile)
{
    const auto slice = [](unsigned machine) { return words({machine, 0, 4096, 1000, 12}); };
    const auto both = header(words({kUniversal, 2}) + slice(kIntel) + slice(kArm));
    EXPECT_EQ(both.format, LibraryFile::Format::machO);
    EXPECT_THAT(both.machines, ElementsAre("x86_64", "arm64"));
    const auto cut = header(words({kUniversal, 2}) + slice(kArm));
    EXPECT_THAT(cut.machines, ElementsAre("arm64", "machine 0"));
    EXPECT_EQ(header(words({kUniversal, 0xFFFFFFFF})).machines.size(), 32u)
        << "however many it claims";
}

TEST(LibraryFile, ReadHeaderKnowsTheMachineOfAFileForOne)
{
    EXPECT_THAT(header(words({0xCFFAEDFE, 0x0C000001})).machines, ElementsAre("arm64"));
    EXPECT_THAT(header(words({0xFEEDFACE, 18})).machines, ElementsAre("ppc"));
    auto elf = std::string("\x7F"
                           "ELF\x02\x01",
                           6) +
               std::string(12, '\0');
    EXPECT_THAT(header(elf + std::string("\xB7\x00", 2)).machines, ElementsAre("arm64"));
    elf[5] = 2; // the most significant byte first
    EXPECT_THAT(header(elf + std::string("\x00\x15", 2)).machines, ElementsAre("ppc64"));
    EXPECT_THAT(header(elf).machines, ElementsAre("machine 0")) << "where it ends before";
    EXPECT_THAT(header("ELF").machines, IsEmpty());
}

TEST(LibraryFile, FindingOfNamesTheMachinesOfAFileForOthers)
{
    auto file = fileFor({"m68k", "vax"});
    EXPECT_EQ(findingOf(file).verdict, Verdict::bad);
    EXPECT_THAT(findingOf(file).text, HasSubstr("is made for m68k and vax, and this is "));
    file.machines.emplace_back(ownMachine());
    EXPECT_EQ(findingOf(file).verdict, Verdict::good);
}

TEST(LibraryFile, FindingOfTellsHowToEndAQuarantine)
{
    auto file = fileFor({ownMachine()});
    file.quarantined = true;
    EXPECT_EQ(findingOf(file).verdict, Verdict::bad);
    EXPECT_THAT(findingOf(file).text, HasSubstr("quarantine"));
    EXPECT_THAT(findingOf(file).remedy,
                HasSubstr("xattr -d com.apple.quarantine '/somewhere/library'"));
}
