// ScriptedObserver: the library's watch on one parameter, with the callbacks that came with it.
//
//   auto* observer = library.observer(37012000);      // made by getVSTObserverObject
//   observer->changeValue(64);                        // calls back now, on this thread
//   observer->atCheck = [=] { observer->changeValue(65); };   // at every checkChange
//   trace: "observer(37012000).checkChange()", "observer(37012000).destroy()"
#pragma once

#include "editorlib/ReservedSlots.h"
#include "pluginterfaces/base/ftypes.h"

#include <atomic>
#include <functional>
#include <string>

namespace doubles {

class ScriptedLibrary;

/** What getVSTObserverObject was called with. */
struct ObserverArguments {
    void* owner = nullptr;
    int vstParamId = 0;
    int a = 0;
    int b = 0;
    int c = 0;
    void (*valueChanged)(void*, unsigned, int) = nullptr;
    Steinberg::Vst::VstIObserver::ParamModeType mode = Steinberg::Vst::VstIObserver::ParamModePart;
    void (*beginEdit)(void*, unsigned) = nullptr;
    void (*endEdit)(void*, unsigned) = nullptr;
};

/** Stays in memory after destroy(), until its library ends. Calls back on the calling thread. */
class ScriptedObserver final : public Steinberg::ReservedSlots<Steinberg::Vst::VstIObserver> {
public:
    ScriptedObserver(ScriptedLibrary& maker, const ObserverArguments& made);
    ScriptedObserver(const ScriptedObserver&) = delete;
    ScriptedObserver& operator=(const ScriptedObserver&) = delete;
    virtual ~ScriptedObserver() = default;

    const ObserverArguments arguments;
    std::function<void()> atCheck; ///< runs inside checkChange
    std::atomic<bool> destroyed{false};

    Steinberg::uint32 id() const { return static_cast<Steinberg::uint32>(arguments.vstParamId); }
    void beginEdit() const { arguments.beginEdit(arguments.owner, id()); }
    void changeValue(int value) const { arguments.valueChanged(arguments.owner, id(), value); }
    void endEdit() const { arguments.endEdit(arguments.owner, id()); }

    void destroy() override;
    void checkChange() override;

private:
    void reserved(int slot) override;
    bool called(const char* operation);

    ScriptedLibrary& library;
};

} // namespace doubles
