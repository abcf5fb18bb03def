// FaultKinds: the ways in which a call can fail, and functions that make a call of a World fail.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace faults {

class World;

enum class Kind {
    kHostAnswers, ///< the host does nothing and answers null, false or an error code
    kHostThrows,
    kHostNonsense, ///< a wrong number or flag, or success without the object
    kHostHugeNumber,
    kHostEmptyText,
    kHostBrokenText,
    kHostEndlessText,
    kLibraryAnswers,
    kLibraryThrows,
    kLibraryNonsense,
    kLibraryHugeNumber,
    kLibraryEmptyText,
    kLibraryBrokenText,
    kLibraryEndlessText,
    kShortTransfer, ///< a stream moves a byte less than asked and answers kResultOk
    kEmptyTransfer, ///< a stream moves nothing and answers kResultOk
    kNoMemory,      ///< one allocation fails
    kNoMoreMemory,  ///< this allocation and all after it fail
    kFileCall,      ///< one file call fails
    kDiskFull,      ///< from this call on no file or folder is made, opened or written
};

const std::vector<Kind>& allKinds();
/** The kinds for calls of the host, and those for calls of the library. */
const std::vector<Kind>& hostKinds();
const std::vector<Kind>& libraryKinds();
const char* kindName(Kind kind);

struct Fault {
    Kind kind;
    size_t call;          ///< 1 is the first; 0: no fault
    std::string text;     ///< the call that failed; empty before
    std::string step;     ///< the World's step that made the call
    bool reached = false; ///< there were that many calls
    bool happened = false;

    explicit Fault(Kind failing = Kind::kHostAnswers, size_t atCall = 0)
    : kind(failing)
    , call(atCall)
    {
    }

    /** Whether the text of the call that failed contains this. */
    bool hit(const std::string& part) const { return text.find(part) != std::string::npos; }
    bool in(const char* name) const { return step == name; }
    bool is(Kind other) const { return kind == other; }

    /** Whether the call answered with something wrong that looks like success. */
    bool isNonsense() const;
    /** Whether the host, or the library, reported a failure or threw. */
    bool isHostFailure() const;
    bool isLibraryFailure() const;
    bool isOutOfMemory() const;
};

/** Makes the fault's call fail from now on. */
void arm(World& world, const Fault& fault);

/** Ends that, and writes into the fault which call failed, if any. */
void disarm(World& world, Fault& fault);

/** From now on notes for each call which nonsense it could answer. */
void watchAnswers(World& world);
/** For each call since then, whether it could answer that kind of nonsense. */
std::vector<bool> answersOf(const World& world, Kind kind);

} // namespace faults
