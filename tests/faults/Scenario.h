// Scenario: something that a host, a user or the library does with the plug-in, and its expected
// results. injectFaults runs it once for each call between the plug-in and its host, library or
// system. That call fails. Then it runs again in the same World without a fault.
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

    /** Both run without faults. */
    virtual void setUp() { world.start(); }
    virtual void tearDown() { world.end(); }

    /** Runs twice, with a fault and then without. */
    virtual void act() = 0;

    /** Checks the results of the second act, which had no fault. */
    virtual void expectDone() = 0;

    /** Checks the results of an act in which a call failed. */
    virtual void expectStated(const Fault&) = 0;
    /** The same for an act in which a call answered nonsense, which the plug-in may believe. */
    virtual void expectBelieved(const Fault&) {}
    /** Checks what is left after tearDown. */
    virtual void expectEnded(const Fault&) {}

    World world;
};

using MakeScenario = std::function<std::unique_ptr<Scenario>()>;

/** Tries faults of these kinds at each call that can have them.
    @param name for messages and for the figures of scripts/figures */
void injectFaults(const char* name, const MakeScenario& make,
                  const std::vector<Kind>& kinds = allKinds());

/** Makes scenarios of one class with these arguments. */
template <class Tried, class... Arguments>
MakeScenario scenario(const Arguments&... arguments)
{
    return [=] { return std::make_unique<Tried>(arguments...); };
}

template <class Tried>
void injectFaults(const char* name, const std::vector<Kind>& kinds = allKinds())
{
    injectFaults(name, scenario<Tried>(), kinds);
}

} // namespace faults
