// Scenario: something that a host, a user or the library does with the plug-in, and what is to come
// of it. injectFaults runs it once for each call that crosses a boundary of the plug-in, with that
// call failing, and once more in the same world with none.
//
//   class Playing : public Scenario { ... void act() override; void expectDone() override; };
//   TEST(Faults, Playing) { injectFaults<Playing>("playing notes"); }
#pragma once

#include "tests/faults/FaultKinds.h"
#include "tests/faults/World.h"

#include <memory>

namespace faults {

class Scenario {
public:
    explicit Scenario(const doubles::HostFamily& family = doubles::HostFamily::cubase("7.5.1"),
                      Binding binding = Binding::kService)
    : world(family, family.hasExtensions ? binding : Binding::kLibrary)
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

    /** What holds after an act with that fault. */
    virtual void expectStated(const Fault&) = 0;
    /** The same when the fault was nonsense, which may well be believed. */
    virtual void expectBelieved(const Fault&) {}
    /** And what at the very end. */
    virtual void expectEnded(const Fault&) {}

    World world;
};

using MakeScenario = std::function<std::unique_ptr<Scenario>()>;

/** With faults of the kinds at every call that can have them. */
void injectFaults(const char* name, const MakeScenario& make,
                  const std::vector<Kind>& kinds = allKinds());

template <class Tried>
void injectFaults(const char* name, const std::vector<Kind>& kinds = allKinds())
{
    injectFaults(
        name, [] { return std::make_unique<Tried>(); }, kinds);
}

} // namespace faults
