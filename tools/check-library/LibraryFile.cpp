#include "tools/check-library/LibraryFile.h"

#include "editorlib/EditorLibraryNames.h"
#include "tools/common/platform/Quarantine.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

namespace fs = std::filesystem;
using Format = LibraryFile::Format;
using Place = LibraryFile::Place;

constexpr size_t kHeaderBytes = 4096;
constexpr std::uint32_t kMostSlices = 32; ///< more than a real file has code for

struct Machine {
    std::uint32_t code;
    const char* name;
};

// The processors' numbers in the two formats, as in <elf.h> and <mach/machine.h>, of which each
// system has only one.
constexpr Machine kElfMachines[] = {{3, "i386"},    {40, "arm"},    {62, "x86_64"},
                                    {183, "arm64"}, {243, "riscv"}, {21, "ppc64"}};
constexpr Machine kMachOMachines[] = {
    {7, "i386"}, {18, "ppc"}, {0x01000007, "x86_64"}, {0x0100000C, "arm64"}};

constexpr std::uint32_t kMachO64 = 0xFEEDFACF;
constexpr std::uint32_t kMachO32 = 0xFEEDFACE;
constexpr std::uint32_t kUniversal = 0xCAFEBABE;
constexpr size_t kUniversalHeader = 8;
constexpr size_t kUniversalSlice = 20;

template <size_t count>
std::string nameOf(const Machine (&machines)[count], std::uint32_t code)
{
    const auto* found = std::find_if(std::begin(machines), std::end(machines),
                                     [&](const Machine& machine) { return machine.code == code; });
    return found == std::end(machines) ? "machine " + std::to_string(code) : found->name;
}

/** An unsigned number of width bytes; 0 where the bytes end too early. */
std::uint32_t number(const std::string& bytes, size_t at, size_t width, bool bigEndian)
{
    if (at + width > bytes.size())
        return 0;
    std::uint32_t value = 0;
    for (size_t index = 0; index < width; ++index) {
        const auto place = bigEndian ? at + index : at + width - 1 - index;
        value = value << 8U | static_cast<unsigned char>(bytes[place]);
    }
    return value;
}

void readElf(const std::string& bytes, LibraryFile& file)
{
    constexpr size_t kByteOrder = 5;
    constexpr size_t kMachine = 18;
    const bool bigEndian = bytes.size() > kByteOrder && bytes[kByteOrder] == 2;
    file.format = Format::elf;
    file.machines = {nameOf(kElfMachines, number(bytes, kMachine, 2, bigEndian))};
}

void readUniversal(const std::string& bytes, LibraryFile& file)
{
    const auto count = std::min(number(bytes, 4, 4, true), kMostSlices);
    file.format = Format::machO;
    for (size_t index = 0; index < count; ++index)
        file.machines.push_back(nameOf(
            kMachOMachines, number(bytes, kUniversalHeader + index * kUniversalSlice, 4, true)));
}

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : " and ") + word;
    return text;
}

std::string quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

/** The topmost part of a path that is not there. */
std::string firstMissingOf(const fs::path& path)
{
    fs::path missing = path;
    std::error_code error;
    while (missing.has_relative_path() && !fs::exists(missing.parent_path(), error) && !error)
        missing = missing.parent_path();
    return missing.string();
}

std::vector<std::string> likenessOf(const fs::path& path)
{
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(path.parent_path(), error)) {
        const auto name = entry.path().filename().string();
        if (name.compare(0, std::strlen(dllNameFront), dllNameFront) == 0)
            names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

void readFile(LibraryFile& file)
{
    std::error_code error;
    file.size = fs::file_size(file.path, error);
    file.quarantined = tools::isQuarantined(file.path);
    errno = 0;
    std::ifstream stream(file.path, std::ios::binary);
    if (!stream) {
        file.place = Place::locked;
        file.reason = std::strerror(errno);
        return;
    }
    std::string bytes(kHeaderBytes, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<size_t>(stream.gcount()));
    readHeader(bytes, file);
}

Finding badFile(const std::string& text, const std::string& remedy = kInstallEditor)
{
    return bad("library-file", text, remedy);
}

Finding missingFinding(const LibraryFile& file)
{
    auto text = "There is no editor library at " + quoted(file.path) + ".";
    if (file.firstMissing != file.path)
        text += " Even the folder " + quoted(file.firstMissing) + " is missing.";
    if (file.likeness.empty())
        return badFile(text,
                       "Install the editor of your instrument: it puts the library there, and "
                       "without it the plug-in stays empty.");
    return badFile(text + " In its folder lies " + joined(file.likeness) +
                       ", which the plug-in does not look for.",
                   "Install the version of the editor that belongs to this plug-in.");
}

Finding otherMachineFinding(const LibraryFile& file)
{
    const auto text = "The editor library is made for " + joined(file.machines) + ", and this is " +
                      ownMachine() + ".";
    if (ownFormat() == Format::machO)
        return badFile(text, "Install a version of the editor for " + std::string(ownMachine()) +
                                 "; until there is one, open your host \"using Rosetta\" (Finder, "
                                 "Get Info), which runs it as x86_64.");
    return badFile(text);
}

Finding contentFinding(const LibraryFile& file)
{
    if (file.size == 0)
        return badFile("The editor library at " + quoted(file.path) + " is an empty file.");
    if (file.format == Format::none)
        return badFile(quoted(file.path) + " is no dynamic library.");
    if (file.format != ownFormat())
        return badFile("The editor library is made for " +
                       std::string(file.format == Format::elf ? "Linux" : "macOS") + " (" +
                       joined(file.machines) + "), and this is another system.");
    if (std::find(file.machines.begin(), file.machines.end(), ownMachine()) == file.machines.end())
        return otherMachineFinding(file);
    if (file.quarantined)
        return badFile(
            "macOS keeps the editor library in quarantine, because it came from the "
            "network: hosts may not be allowed to load it.",
            "Install the editor with its own installer. If you trust where the file comes "
            "from: xattr -d com.apple.quarantine '" +
                file.path + "'");
    return good("library-file",
                quoted(file.path) + " is there, made for " + joined(file.machines) + ".",
                {{"path", file.path}, {"machines", file.machines}, {"bytes", file.size}});
}

} // namespace

const char* ownMachine()
{
#if defined(__x86_64__)
    return "x86_64";
#elif defined(__aarch64__)
    return "arm64";
#elif defined(__i386__)
    return "i386";
#elif defined(__arm__)
    return "arm";
#elif defined(__riscv)
    return "riscv";
#elif defined(__powerpc64__)
    return "ppc64";
#else
    return "another machine";
#endif
}

Format ownFormat()
{
#if defined(__APPLE__)
    return Format::machO;
#else
    return Format::elf;
#endif
}

LibraryFile lookAt(const std::string& path)
{
    LibraryFile file;
    file.path = path;
    std::error_code error;
    const auto status = fs::status(path, error);
    std::error_code ignored;
    const auto link = fs::symlink_status(path, ignored);
    if (status.type() == fs::file_type::none || status.type() == fs::file_type::unknown) {
        file.place = Place::locked;
        file.reason = error.message();
    } else if (fs::is_regular_file(status)) {
        file.place = Place::file;
        readFile(file);
    } else if (fs::exists(status)) {
        file.place = fs::is_directory(status) ? Place::folder : Place::device;
    } else if (fs::is_symlink(link)) {
        file.place = Place::deadLink;
    } else {
        file.firstMissing = firstMissingOf(path);
        file.likeness = likenessOf(path);
    }
    return file;
}

void readHeader(const std::string& bytes, LibraryFile& file)
{
    if (bytes.compare(0, 4,
                      "\x7F"
                      "ELF") == 0)
        return readElf(bytes, file);
    if (number(bytes, 0, 4, true) == kUniversal)
        return readUniversal(bytes, file);
    for (const bool bigEndian : {false, true}) {
        const auto magic = number(bytes, 0, 4, bigEndian);
        if (magic != kMachO64 && magic != kMachO32)
            continue;
        file.format = Format::machO;
        file.machines = {nameOf(kMachOMachines, number(bytes, 4, 4, bigEndian))};
    }
}

Finding findingOf(const LibraryFile& file)
{
    switch (file.place) {
    case Place::missing:
        return missingFinding(file);
    case Place::deadLink:
        return badFile(quoted(file.path) + " is a link to a file that is not there.");
    case Place::folder:
        return badFile(quoted(file.path) + " is a folder and no file.",
                       "Remove that folder and install the editor of your instrument again.");
    case Place::device:
        return badFile(quoted(file.path) + " is no file.");
    case Place::locked:
        return badFile(quoted(file.path) + " cannot be read: " + file.reason + ".",
                       "Make the file and the folders above it readable for every user, or install "
                       "the editor again.");
    case Place::file:
        break;
    }
    return contentFinding(file);
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
