// HostUpdatesDouble: the host's update handler. As in the SDK it holds no references. A dependent
// that was added twice is told twice. One that is removed during a notice is not told any more. A
// deferred notice is dropped with the last dependent.
//
//   host.updates.tell(value, IDependent::kChanged);   // the host's notice; at once, or
//   host.updates.deferred = true;                     // ... kept until
//   host.updates.deliver();
//   host.updates.observed() == {"device(Mixer)", "value(Mixer.selected)"}
//   trace: "updateHandler.addDependent(device(Mixer))", "notice(device(Mixer), 1)"
#pragma once

#include "pluginterfaces/base/iupdatehandler.h"
#include "tests/doubles/Counted.h"

#include <list>

namespace doubles {

/** [any thread]; dependents are called on the thread that tells or delivers. */
class HostUpdatesDouble final : public Counted<Steinberg::IUpdateHandler> {
public:
    explicit HostUpdatesDouble(HostBooks& host);

    bool deferred = false;                               ///< tell() keeps notices for deliver()
    Steinberg::tresult addResult = Steinberg::kResultOk; ///< anything else refuses dependents

    void tell(Steinberg::FUnknown* object, Steinberg::int32 message);
    void deliver();

    /** Drops every dependent, as when the project is closed. */
    void forgetDependents();

    /** Names of the objects with dependents, in the order of their adding, once for each
        addDependent. */
    std::vector<std::string> observed() const;

    /** "dependents of device(Mixer): expected 0, is 1" for each object that still has any. */
    std::vector<std::string> unbalanced() const;

    Steinberg::tresult PLUGIN_API addDependent(Steinberg::FUnknown* object,
                                               Steinberg::IDependent* dependent) override;
    Steinberg::tresult PLUGIN_API removeDependent(Steinberg::FUnknown* object,
                                                  Steinberg::IDependent* dependent) override;
    Steinberg::tresult PLUGIN_API triggerUpdates(Steinberg::FUnknown* object,
                                                 Steinberg::int32 message) override;
    Steinberg::tresult PLUGIN_API deferUpdates(Steinberg::FUnknown* object,
                                               Steinberg::int32 message) override;

private:
    struct Dependency {
        Steinberg::FUnknown* object;
        Steinberg::IDependent* dependent;
    };
    struct Notice {
        Steinberg::FUnknown* object;
        Steinberg::int32 message;
    };
    /** A notice under way; removed dependents become null in it. */
    struct Round {
        Steinberg::FUnknown* object;
        std::vector<Steinberg::IDependent*> dependents;
    };

    Steinberg::FUnknown* identity(Steinberg::FUnknown* object) const;
    bool hasDependents(const Steinberg::FUnknown* object) const;
    void strikeFromRounds(const Steinberg::FUnknown* object,
                          const Steinberg::IDependent* dependent);
    bool isUnderWay(const Steinberg::FUnknown* object) const;

    mutable std::recursive_mutex mutex;
    std::vector<Dependency> dependencies;
    std::deque<Notice> notices;
    std::list<Round> rounds;
};

} // namespace doubles
