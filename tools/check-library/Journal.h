// Journal: what one step tells the process that started it.
#pragma once

#include "tools/check-library/Finding.h"

#include <mutex>
#include <string>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** Names each call before it is made, so that the other process knows where this one stood when it
    crashed or hung. One line a message; the first character says which it is. [any thread] */
class Journal {
public:
    static constexpr char kEntered = 'C'; ///< and a thread's number, a blank, the call
    static constexpr char kLeft = 'R';    ///< and a thread's number
    static constexpr char kFinding = 'F'; ///< and the finding in JSON
    static constexpr char kDone = 'E';    ///< the step has come to its end

    /** @param newDescriptor to write to, borrowed; -1 writes nothing */
    explicit Journal(int newDescriptor)
    : descriptor(newDescriptor)
    {
    }
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    void enter(const std::string& call);
    void leave();
    void say(const Finding& finding);
    void done();

private:
    void write(const std::string& line);

    const int descriptor;
    std::mutex mutex; ///< one line at a time
};

/** A call that is under way for as long as this object lives. */
class Entered {
public:
    Entered(Journal& newJournal, const std::string& call)
    : journal(newJournal)
    {
        journal.enter(call);
    }
    ~Entered() { journal.leave(); }
    Entered(const Entered&) = delete;
    Entered& operator=(const Entered&) = delete;

private:
    Journal& journal;
};

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
