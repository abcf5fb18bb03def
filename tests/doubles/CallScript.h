// CallScript: what happens at a call into a double. It records the call, and a test can step in,
// let it fail or let it throw. The base class of ScriptedHost and ScriptedLibrary.
//
//   host.onCall = [&](const std::string& text) { if (text == "...") controller.terminate(); };
//   host.failAt("portRegistry.getPortByIndex(2)");   // answers null, false, kResultFalse, nothing
//   library.throwAt("start");                        // the operation's name alone will do
//   for (size_t n = 1; ; ++n) {                      // every call of a procedure fails in turn
//       host.failAtCall(n); procedure(); if (host.callCount() < n) break; }
#pragma once

#include "tests/doubles/Trace.h"

#include <atomic>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>

namespace doubles {

/** What a call throws that a test wants to throw. */
class ScriptedFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/** Wrong answers of a call. Which of them a call can give depends on the type of its answer. */
enum class Nonsense {
    kWrong, ///< -7; true for false, false for true; or success without the object
    kHuge,  ///< the largest number, with nothing behind it
    kEmptyText,
    kBrokenText,  ///< lone surrogates, or bytes that are no UTF-8
    kEndlessText, ///< longer than any buffer: fills it without a terminator
};

/** Calls come from any thread; tests set the hook and the faults while none is under way. */
class CallScript {
public:
    explicit CallScript(Trace& trace)
    : record(&trace)
    {
    }
    CallScript(const CallScript&) = delete;
    CallScript& operator=(const CallScript&) = delete;

    /** Runs before the call takes effect, with the call's text; may call back, and may throw. */
    std::function<void(const std::string& text)> onCall;

    /** From now on every such call fails or throws. A call is named by the beginning of its text,
        "port(A).", or by its operation alone, "getPortId". */
    void failAt(const std::string& call);
    void throwAt(const std::string& call);

    /** The n-th call from now (1 is the next one) fails or throws. Interface queries count too. */
    void failAtCall(size_t n) { setFaultAtCall(n, Fault::kFail); }
    void throwAtCall(size_t n) { setFaultAtCall(n, Fault::kThrow); }

    /** The n-th call from now gives such a wrong answer, if its type has one. nonsenseTold says
        whether it did. */
    void talkNonsenseAtCall(size_t n, Nonsense what = Nonsense::kWrong);
    bool nonsenseTold() const;
    static constexpr int kNonsense = -7;
    void clearFaults();

    /** From now on notes for each call which wrong answers it can give. */
    void watchAnswers();
    /** Whether the n-th call since then can give this one. */
    bool hadAnswer(size_t n, Nonsense what) const;

    /** Calls since the last failAtCall, throwAtCall or clearFaults. */
    size_t callCount() const;

    /** The call that failed or threw last since then; empty when none did. */
    std::string faultyText() const;

    Trace& getTrace() const { return *record; }
    void setTrace(Trace& other) { record = &other; }

    /** For doubles: records a call, runs the hook, throws or answers false as the test said. */
    bool called(const std::string& text);

    /** The same without a record. */
    bool asked(const std::string& text);

    // For doubles, behind called or asked: the call's own answer, or the wrong one of the test.
    /** @param most the answer for kHuge: as many as the caller can go through one by one */
    int told(int answer, int most = std::numeric_limits<int>::max());
    bool toldFlag(bool answer) { return tells(Nonsense::kWrong) != answer; }
    /** Whether the call answers success and gives no object. */
    bool toldWithoutObject();
    /** Which wrong text the call gives instead of its own, if any. */
    std::optional<Nonsense> toldText();

private:
    enum class Fault { kFail, kThrow, kNonsense };
    struct NamedFault {
        std::string call;
        Fault fault;
    };

    void setFaultAtCall(size_t n, Fault fault, Nonsense what = Nonsense::kWrong);
    bool apply(Fault fault, const std::string& text) const;
    bool tells(Nonsense what);

    Trace* record;
    mutable std::mutex mutex;
    std::vector<NamedFault> namedFaults;
    size_t count = 0;
    size_t faultyCall = 0; ///< 0: none
    Fault faultOfCall = Fault::kFail;
    Nonsense nonsense = Nonsense::kWrong;
    std::string faulty;
    std::atomic<bool> talksNonsense{false}; ///< in the call that was asked last
    std::atomic<bool> toldNonsense{false};
    bool watched = false;
    std::vector<unsigned> answers; ///< by call: a bit for each Nonsense
};

} // namespace doubles
