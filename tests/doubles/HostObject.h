// HostObject: the name and the reference count of an object of a scripted host. Counted.h adds the
// interfaces.
//
//   object.getName()          "port(A)", as in the trace and the ledger
//   object.getReferences()    1 for an object that only the host holds
#pragma once

#include "pluginterfaces/base/funknown.h"
#include "tests/doubles/CallText.h"

#include <atomic>

namespace doubles {

class HostBooks;

/** Starts with one reference, the host's own. It lives until the host ends, so that the ledger can
    report an object that was released too often. [any thread] */
class HostObject {
public:
    HostObject(HostBooks& host, std::string givenName);
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;
    virtual ~HostObject() = default;

    virtual Steinberg::FUnknown* unknown() = 0;

    const std::string& getName() const { return objectName; }
    int getReferences() const { return references; }
    HostBooks& getBooks() const { return books; }

    /** The object's one reference now belongs to the plug-in, which must release it. */
    void giveAway() { expected = 0; }

    /** The host takes over one reference of the plug-in, which must not release it. */
    void takeOver() { ++expected; }

    /** A line for the ledger, or an empty text for an object that is as it should be. */
    std::string imbalance() const;

protected:
    Steinberg::uint32 countUp();
    Steinberg::uint32 countDown();

    /** Records a call and gives what CallScript::called gives. */
    template <typename... Arguments>
    bool called(const char* operation, const Arguments&... arguments)
    {
        return calledAs(callText(objectName, operation, arguments...));
    }
    bool calledAs(const std::string& text);

    HostBooks& books;

private:
    const std::string objectName;
    std::atomic<int> references{1};
    std::atomic<int> expected{1};
    std::atomic<int> lowest{1};
    std::atomic<bool> usedAfterEnd{false};
};

} // namespace doubles
