// Scenario: something that a host, a user or the library does with the plug-in, and what is to come
// of it. injectFaults runs it once for each call that crosses a boundary of the plug-in, with that
// call failing, and once more in the same world with none.
//
//   class Playing : public Scenario { ... void act() override; void expectDone() override; };
//   TEST(Faults, Playing) { injectFaults<Playing>("playing notes"); }
#pragma once

#include "tests/faults/World.h"

#include <memory>

namespace faults {

enum class Kind {
    kHostAnswers, ///< null, false, an error code, or nothing done
    kHostThrows,
    kHostNonsense, ///< a number that makes no sense
    kLibraryAnswers,
    kLibraryThrows,
    kLibraryNonsense,
    kShortTransfer, ///< a stream moves a byte less than asked
    kNoMemory,
    kFileCall,
};

struct Fault {
    Kind kind = Kind::kHostAnswers;
    size_t call = 0;     ///< 1 is the first; 0: no fault at all
    std::string text;    ///< the call that failed, once it did
    bool isTold = false; ///< nonsense was the answer of a call that answers with a number

    bool hit(const std::string& part) const { return text.find(part) != std::string::npos; }
};

class Scenario {
public:
    explicit Scenario(const doubles::HostFamily& family = doubles::HostFamily::cubase("7.5.1"),
                      Binding binding = Binding::kService)
    : world(family, binding)
    {
    }
    Scenario(const Scenario&) = delete;
    Scenario& operator=(const Scenario&) = delete;
    virtual ~Scenario() = default;

    /** Without faults, before and after everything. */
    virtual void setUp() { world.start(); }
    virtual void tearDown() { world.end(); }

    /** Runs twice: with a fault, then without. */
    virtual void act() = 0;

    /** What an act without fault, the last one, has brought about. */
    virtual void expectDone() = 0;

    /** What holds after an act with that fault, and what at the very end. Nonsense is not asked
        for the first: it may well be believed. */
    virtual void expectStated(const Fault&) {}
    virtual void expectEnded(const Fault&) {}

    World world;
};

using MakeScenario = std::function<std::unique_ptr<Scenario>()>;

void injectFaults(const char* name, const MakeScenario& make);

template <class Tried>
void injectFaults(const char* name)
{
    injectFaults(name, [] { return std::make_unique<Tried>(); });
}

} // namespace faults
