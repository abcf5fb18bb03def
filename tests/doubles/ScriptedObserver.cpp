#include "tests/doubles/ScriptedObserver.h"

#include "tests/doubles/ScriptedLibrary.h"

namespace doubles {

ScriptedObserver::ScriptedObserver(ScriptedLibrary& maker, const ObserverArguments& made)
: arguments(made)
, library(maker)
{
}

bool ScriptedObserver::called(const char* operation)
{
    const auto text = callText("observer(" + std::to_string(id()) + ")", operation);
    if (destroyed)
        library.complain(text + " after destroy");
    return library.called(text);
}

void ScriptedObserver::destroy()
{
    const bool goesOn = called("destroy");
    destroyed = true;
    if (goesOn)
        library.noteDestroyed(*this);
}

void ScriptedObserver::checkChange()
{
    if (called("checkChange") && atCheck)
        atCheck();
}

void ScriptedObserver::reserved(int slot)
{
    library.complain("observer: slot " + std::to_string(slot) + " is reserved");
}

} // namespace doubles
