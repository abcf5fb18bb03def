// FaultKinds: what can fail and how, and how a fault gets into a world and out again.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace faults {

class World;

enum class Kind {
    kHostAnswers, ///< null, false, an error code, or nothing done
    kHostThrows,
    kHostNonsense, ///< a number that makes no sense, a flag the other way, success without object
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
    kShortTransfer, ///< a stream moves a byte less than asked, and says that all is well
    kEmptyTransfer, ///< a stream moves nothing, and says so
    kNoMemory,
    kNoMoreMemory, ///< from that allocation on
    kFileCall,
    kDiskFull, ///< from that file call on nothing is made, opened or written
};

const std::vector<Kind>& allKinds();
/** Those of the host's calls; those of the library's. */
const std::vector<Kind>& hostKinds();
const std::vector<Kind>& libraryKinds();
const char* kindName(Kind kind);

struct Fault {
    Kind kind;
    size_t call;          ///< 1 is the first; 0: no fault at all
    std::string text;     ///< the call that failed, once it did
    std::string step;     ///< in which step of the act
    bool reached = false; ///< there were as many calls
    bool happened = false;

    explicit Fault(Kind failing = Kind::kHostAnswers, size_t atCall = 0)
    : kind(failing)
    , call(atCall)
    {
    }

    bool hit(const std::string& part) const { return text.find(part) != std::string::npos; }
    bool in(const char* name) const { return step == name; }
    bool is(Kind other) const { return kind == other; }

    /** Somebody said something that may well be believed. */
    bool isNonsense() const;
    /** The host, or the library, answered as if it had failed, or threw. */
    bool isHostFailure() const;
    bool isLibraryFailure() const;
    bool isOutOfMemory() const;
};

void arm(World& world, const Fault& fault);

/** Takes the fault out; it then knows which call failed, if any. */
void disarm(World& world, Fault& fault);

/** Which calls of a world could answer with which nonsense: told by an act without a fault. */
void watchAnswers(World& world);
std::vector<bool> answersOf(const World& world, Kind kind);

} // namespace faults
