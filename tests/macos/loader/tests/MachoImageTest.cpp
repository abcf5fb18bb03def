// An image in memory: its pointers, what it may not write, and what the calls that it makes of
// Darwin's look like on Linux.
#include "tests/macos/loader/MachoImage.h"
#include "tests/macos/loader/CompactUnwind.h"
#include "tests/macos/loader/ConstantData.h"
#include "tests/macos/loader/OpcodeReader.h"
#include "tests/macos/loader/tests/MadeFile.h"

#include <algorithm>
#include <gmock/gmock.h>

extern "C" {
void* darwin_dlopen(const char* path, int mode);
int darwin_pthread_mutex_init(void* mutex, const void* attributes);
int darwin_pthread_mutex_lock(void* mutex);
int darwin_pthread_mutex_trylock(void* mutex);
int darwin_pthread_mutex_unlock(void* mutex);
int darwin_pthread_mutex_destroy(void* mutex);
int darwin_pthread_mutexattr_init(void* attributes);
int darwin_pthread_mutexattr_settype(void* attributes, int kind);
int darwin_pthread_mutexattr_destroy(void* attributes);
void darwin__ZNSt3__118condition_variable10notify_allEv(void* condition);
}

namespace {

using namespace macho;
using testing::HasSubstr;

uint64_t pointerAt(const MachoImage& image, uint64_t address)
{
    return numberAt<uint64_t>(image.begin(), image.size(), address);
}

int offered = 0;

void* onlyA(const std::string& symbol)
{
    return symbol == "_a" ? &offered : nullptr;
}

/** Two pointers in the constant data: to the image itself, and to "_a". */
MadeFile madeWithPointers()
{
    MadeFile made;
    made.rebases = {0x11, 0x21, 0, 0x51};
    made.binds = {0x40, '_', 'a', 0, 0x51, 0x71, 8, 0x60, 4, 0x90};
    made.words = {{MadeFile::kConstants, 0x1234}};
    return made;
}

TEST(MachoImage, MovesAndBindsItsPointers)
{
    const MachoImage image(MachoFile(madeWithPointers().bytes()), onlyA);
    EXPECT_EQ(pointerAt(image, MadeFile::kConstants),
              reinterpret_cast<uint64_t>(image.begin()) + 0x1234);
    EXPECT_EQ(pointerAt(image, MadeFile::kConstants + 8), reinterpret_cast<uint64_t>(&offered) + 4);
    EXPECT_EQ(image.counts().rebases, 1u);
    EXPECT_EQ(image.counts().binds, 1u);
}

TEST(MachoImage, IsRefusedForAnImportThatNobodyOffers)
{
    auto made = madeWithPointers();
    made.binds[2] = 'b';
    try {
        const MachoImage image(MachoFile(made.bytes()), onlyA);
        FAIL();
    } catch (const LoadError& error) {
        EXPECT_THAT(error.what(), HasSubstr("nobody offers the import _b"));
    }
    made.binds[0] = 0x41; // one that may be missing
    const MachoImage image(MachoFile(made.bytes()), onlyA);
    EXPECT_EQ(pointerAt(image, MadeFile::kConstants + 8), 4u);
}

int initialised = 0;

void initialise()
{
    ++initialised;
}

TEST(MachoImage, RunsEachOfItsInitialisersOnce)
{
    MadeFile made;
    made.sectionType = 9; // of 64 bytes, which are eight pointers
    made.binds = {0x40, '_', 'i', 0, 0x51, 0x72, 0, 0xC0, 8, 0};
    initialised = 0;
    const MachoImage image(MachoFile(made.bytes()),
                           [](const std::string&) { return reinterpret_cast<void*>(&initialise); });
    EXPECT_EQ(initialised, 8);
    EXPECT_EQ(image.counts().initialisers, 8u);
}

TEST(MachoImage, HasNoFunctionThatItDoesNotExport)
{
    const MachoImage image(MachoFile(madeWithPointers().bytes()), onlyA);
    EXPECT_THROW(image.function<void()>("_bundleEntry"), LoadError);
}

TEST(MachoImage, EndsTheProgramWhenItsConstantDataIsWritten)
{
    const MachoImage image(MachoFile(madeWithPointers().bytes()), onlyA);
    const ConstantData watched(image.begin(), image.size());
    auto* const bytes = const_cast<volatile uint8_t*>(image.begin());
    bytes[MadeFile::kData] = 1;
    EXPECT_EQ(image.begin()[MadeFile::kData], 1);
    EXPECT_DEATH(bytes[MadeFile::kConstants + 16] = 1, "constant data of the image was written");
    EXPECT_DEATH(bytes[16] = 1, "constant data of the image was written");
}

/** A section __unwind_info with one page of one function and the given encoding of it. */
std::vector<uint32_t> unwindInfo(uint32_t encoding)
{
    return {1,     28,          0,     28,      0, 28, 2, // no encodings or personalities in common
            0x100, 52,          64,    0x200,   0, 64,    // the page, and the end of the code
            2,     8 | 1 << 16, 0x100, encoding};
}

std::vector<UnwindEntry> read(const std::vector<uint32_t>& section)
{
    return readUnwindInfo(reinterpret_cast<const uint8_t*>(section.data()), 4 * section.size());
}

TEST(CompactUnwind, ReadsFunctionsWithTheirEncodings)
{
    const auto entries = read(unwindInfo(0x01000000));
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].begin, 0x100u);
    EXPECT_EQ(entries[0].end, 0x200u);
    EXPECT_EQ(entries[0].encoding, 0x01000000u);
}

#ifdef __x86_64__
constexpr uint32_t kLeftToDwarf = 0x04000000;
#else
constexpr uint32_t kLeftToDwarf = 0x03000000;
#endif

TEST(CompactUnwind, RefusesWhatItDoesNotKnow)
{
    auto version = unwindInfo(0);
    version[0] = 2;
    EXPECT_THROW(read(version), LoadError);
    auto page = unwindInfo(0);
    page[13] = 4;
    EXPECT_THROW(read(page), LoadError);
    EXPECT_THROW(read(unwindInfo(0x40000000)), LoadError) << "language data that is not there";
    EXPECT_THROW(read(unwindInfo(0x10000000)), LoadError) << "a personality that is not there";
    auto cut = unwindInfo(0);
    cut.pop_back();
    EXPECT_THROW(read(cut), LoadError);
    EXPECT_THROW(framesOf(read(unwindInfo(0x0F000000)), nullptr), LoadError);
#ifdef __x86_64__
    EXPECT_THROW(framesOf(read(unwindInfo(0x02020400)), nullptr), LoadError)
        << "saved registers without a frame pointer";
#endif
    EXPECT_NO_THROW(framesOf(read(unwindInfo(0)), nullptr));
    // Left to DWARF frames, which the linker leaves unusable; with a catch in it, and without.
    const UnwindEntry catching = {0x100, 0x200, kLeftToDwarf | 0x40000000, 0x300, 0};
    EXPECT_THROW(framesOf({catching}, nullptr), LoadError);
    EXPECT_EQ(framesOf(read(unwindInfo(kLeftToDwarf)), nullptr).size(), 4u) << "no frame";
}

#ifdef __x86_64__
/** The caller's stack pointer two words up (DW_CFA_def_cfa rsp, 16), the return address below it.
 */
TEST(CompactUnwind, DescribesAFunctionWithoutAFramePointer)
{
    const auto frames = framesOf(read(unwindInfo(0x02020000)), nullptr);
    const std::vector<uint8_t> rules = {0x0C, 7, 16, 0x05, 16, 1};
    EXPECT_NE(std::search(frames.begin(), frames.end(), rules.begin(), rules.end()), frames.end());
}
#endif

/** A Darwin mutex's memory, as zeros, which is how it is before anybody makes it. */
struct Memory {
    alignas(16) uint64_t words[8] = {};
};

TEST(DarwinMutex, IsRecursiveWhenItIsMadeSo)
{
    Memory attributes;
    Memory mutex;
    EXPECT_EQ(darwin_pthread_mutexattr_init(attributes.words), 0);
    EXPECT_EQ(darwin_pthread_mutexattr_settype(attributes.words, 2), 0);
    EXPECT_NE(darwin_pthread_mutexattr_settype(attributes.words, 3), 0);
    EXPECT_EQ(darwin_pthread_mutex_init(mutex.words, attributes.words), 0);
    EXPECT_EQ(darwin_pthread_mutexattr_destroy(attributes.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_lock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_trylock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_unlock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_unlock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_destroy(mutex.words), 0);
}

TEST(DarwinMutex, IsMadeAtItsFirstUseWhenItBeginsWithTheInitialiser)
{
    Memory mutex;
    mutex.words[0] = 0x32AAABA7;
    EXPECT_EQ(darwin_pthread_mutex_lock(mutex.words), 0);
    EXPECT_NE(darwin_pthread_mutex_trylock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_unlock(mutex.words), 0);
    EXPECT_EQ(darwin_pthread_mutex_destroy(mutex.words), 0);
}

TEST(DarwinMutex, EndsTheProgramWhenItWasNeverMadeOrIsGone)
{
    Memory mutex;
    EXPECT_DEATH(darwin_pthread_mutex_lock(mutex.words), "mutex was used that nobody made");
    EXPECT_DEATH(darwin_pthread_mutex_destroy(mutex.words), "mutex was destroyed that nobody made");
    darwin_pthread_mutex_init(mutex.words, nullptr);
    darwin_pthread_mutex_destroy(mutex.words);
    EXPECT_DEATH(darwin_pthread_mutex_unlock(mutex.words), "mutex was used that nobody made");
    EXPECT_DEATH(darwin_pthread_mutex_init(mutex.words, mutex.words), "attributes were used");
    EXPECT_DEATH(darwin__ZNSt3__118condition_variable10notify_allEv(mutex.words),
                 "condition variable was used that nobody made");
}

TEST(DarwinDlopen, LoadsWhatIsOnlyToBeLocal)
{
    constexpr int kLazyLocal = 1 | 4;
    constexpr int kLazyNoLoad = 1 | 16;
    EXPECT_EQ(darwin_dlopen(VSTK2X_SCRIPTED_LIBRARY, kLazyNoLoad), nullptr);
    EXPECT_NE(darwin_dlopen(VSTK2X_SCRIPTED_LIBRARY, kLazyLocal), nullptr);
    EXPECT_NE(darwin_dlopen(VSTK2X_SCRIPTED_LIBRARY, kLazyNoLoad), nullptr);
    EXPECT_DEATH(darwin_dlopen(VSTK2X_SCRIPTED_LIBRARY, 0x1000), "mode that Darwin does not have");
}

} // namespace
