// ScriptedHost: a whole host for one test, of any family. Its parts have headers of their own.
//
//   doubles::Trace trace;
//   doubles::ScriptedHost host(trace, doubles::HostFamily::cubase("7.5.1"));
//   host.ports.audioInput("A", "Tavrin 1");
//   controller->initialize(&host.context);  controller->setComponentHandler(&host.handler);  ...
//   EXPECT_THAT(host.ledger(), IsEmpty());  // every reference, dependent and timer is back
//
// Faults and hooks: CallScript.h (host.onCall, failAt, throwAt, failAtCall, throwAtCall).
// Not offered any more: host.hide(IPortRegistry::iid), and host.show(...) again.
#pragma once

#include "tests/doubles/HostContextDouble.h"
#include "tests/doubles/HostDevicesDouble.h"
#include "tests/doubles/HostHandlerDouble.h"
#include "tests/doubles/HostServiceDouble.h"
#include "tests/doubles/PeerDouble.h"

namespace doubles {

/** Set up on one thread; its objects are then used from any thread as a real host's would be. */
class ScriptedHost : public CallScript {
public:
    explicit ScriptedHost(Trace& trace, const HostFamily& family = HostFamily::cubase("7.5.1"));

private:
    HostBooks books;

public:
    HostUpdatesDouble& updates;
    HostPortsDouble ports;
    HostDevicesDouble devices;
    HostServiceDouble service;
    HostRunLoopDouble& runLoop;
    HostContextDouble& context; ///< for initialize()
    HostHandlerDouble& handler; ///< for setComponentHandler()
    PeerDouble& peer;           ///< for connect()

    void hide(const Steinberg::FUID& iid) { books.hide(iid); }
    void show(const Steinberg::FUID& iid) { books.show(iid); }

    HostBooks& getBooks() { return books; }

    /** What the controller is to find out about this host at the start. */
    bool isUnicodeApplicationHost() const;
    Steinberg::int32 hostType() const;

    /** Records "query(context, IHostClasses)"; and "context.addRef()", "context.release()". */
    void traceQueries() { books.traceQueries = true; }
    void traceReferences() { books.traceReferences = true; }

    /** Whatever is not back where it was: "port(A): expected 1, is 2",
        "dependents of device(Mixer): expected 0, is 1", "timers: expected 0, is 1". A bus
        descriptor that the host took over counts as the host's. */
    std::vector<std::string> ledger() const;
};

} // namespace doubles
