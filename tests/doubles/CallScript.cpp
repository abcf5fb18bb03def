#include "tests/doubles/CallScript.h"

namespace doubles {
namespace {

bool beginsWith(const std::string& text, const std::string& beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

/** "value(Mixer.selected).getInteger()" gives "getInteger()". */
std::string operationOf(const std::string& text)
{
    const auto dot = text.find('.');
    if (dot == std::string::npos)
        return text;
    if (text.find('(') > dot)
        return text.substr(dot + 1);
    const auto end = text.find(").");
    return end == std::string::npos ? text : text.substr(end + 2);
}

bool isNamedBy(const std::string& text, const std::string& call)
{
    return beginsWith(text, call) || operationOf(text) == call ||
           beginsWith(operationOf(text), call + "(");
}

unsigned bitOf(Nonsense what)
{
    return 1U << static_cast<unsigned>(what);
}

} // namespace

void CallScript::failAt(const std::string& call)
{
    const std::lock_guard<std::mutex> guard(mutex);
    namedFaults.push_back({call, Fault::kFail});
}

void CallScript::throwAt(const std::string& call)
{
    const std::lock_guard<std::mutex> guard(mutex);
    namedFaults.push_back({call, Fault::kThrow});
}

void CallScript::talkNonsenseAtCall(size_t n, Nonsense what)
{
    setFaultAtCall(n, Fault::kNonsense, what);
}

bool CallScript::nonsenseTold() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return toldNonsense;
}

void CallScript::watchAnswers()
{
    const std::lock_guard<std::mutex> guard(mutex);
    count = 0;
    watched = true;
    answers.clear();
}

bool CallScript::hadAnswer(size_t n, Nonsense what) const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return n >= 1 && n <= answers.size() && (answers[n - 1] & bitOf(what)) != 0;
}

bool CallScript::tells(Nonsense what)
{
    const std::lock_guard<std::mutex> guard(mutex);
    if (watched && !answers.empty())
        answers.back() |= bitOf(what);
    const bool result = talksNonsense && nonsense == what;
    if (result)
        toldNonsense = true;
    return result;
}

int CallScript::told(int answer, int most)
{
    if (tells(Nonsense::kWrong))
        return kNonsense;
    return tells(Nonsense::kHuge) ? most : answer;
}

bool CallScript::toldWithoutObject()
{
    return tells(Nonsense::kWrong);
}

std::optional<Nonsense> CallScript::toldText()
{
    for (const auto what : {Nonsense::kEmptyText, Nonsense::kBrokenText, Nonsense::kEndlessText})
        if (tells(what))
            return what;
    return std::nullopt;
}

void CallScript::setFaultAtCall(size_t n, Fault fault, Nonsense what)
{
    const std::lock_guard<std::mutex> guard(mutex);
    count = 0;
    faultyCall = n;
    faultOfCall = fault;
    nonsense = what;
    faulty.clear();
    talksNonsense = false;
    toldNonsense = false;
    watched = false;
}

void CallScript::clearFaults()
{
    const std::lock_guard<std::mutex> guard(mutex);
    namedFaults.clear();
    count = 0;
    faultyCall = 0;
    faulty.clear();
    talksNonsense = false;
    watched = false;
}

size_t CallScript::callCount() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return count;
}

std::string CallScript::faultyText() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return faulty;
}

bool CallScript::called(const std::string& text)
{
    record->add(text);
    return asked(text);
}

bool CallScript::asked(const std::string& text)
{
    std::optional<Fault> fault;
    {
        const std::lock_guard<std::mutex> guard(mutex);
        ++count;
        if (count == faultyCall)
            fault = faultOfCall;
        for (const auto& named : namedFaults)
            if (!fault && isNamedBy(text, named.call))
                fault = named.fault;
        if (fault)
            faulty = text;
        talksNonsense = fault == Fault::kNonsense;
        if (watched)
            answers.push_back(0);
    }
    if (onCall)
        onCall(text);
    return !fault || apply(*fault, text);
}

bool CallScript::apply(Fault fault, const std::string& text) const
{
    if (fault == Fault::kThrow)
        throw ScriptedFailure(text);
    return fault == Fault::kNonsense;
}

} // namespace doubles
