// ParameterModel: the controller's mirrored parameters, their observers, and the way of a change in
// the editor to the host.
#pragma once

#include "controller/EditorParameter.h"
#include "editorlib/EntryPoints.h"

#include "base/thread/include/flock.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace Steinberg {
namespace Vst {

class ParameterContainer;
class VstK2xController;
struct HostAndLibrary;
struct PartParameter;

/** Parameters are created on the host's main thread; changes come on any library thread.

    A change goes to the host at once in a Unicode host, else through a queue that the timer drains
    on the main thread. Locks, never held the other way round: an EditorParameter's "ParameterFlag"
    is released before "GuiEventLocker" is taken, and "GuiEventLocker" is held while the host is
    called. What the host sees has one lock: the ID map, the base class's container and the
    normalized and default values. Nobody is called and no other lock is taken while it is held. A
    callback that comes late finds either no parameter or one that lives until the callback has
    finished with it: uses of editor values are counted, and clear waits for them. The SDK's
    reference count would not do, since it reads the count again after having changed it. */
class ParameterModel {
public:
    /** What happens to a parameter in the editor. */
    enum GuiEvent : int32 { GuiEventBeginEdit = 0, GuiEventEndEdit = 1, GuiEventValueChange = 2 };

    /** All three outlive this object.
        @param controller tells the host, and is the context of the library's callbacks
        @param container the controller's, which the host sees */
    ParameterModel(VstK2xController& controller, ParameterContainer& container,
                   const HostAndLibrary& hostAndLibrary);
    ~ParameterModel();
    ParameterModel(const ParameterModel&) = delete;
    ParameterModel& operator=(const ParameterModel&) = delete;

    /** Creates an observer of an editor parameter, if the library can make one. It is destroyed by
        removeObservers.
        @return the parameter's VST ID in any case */
    unsigned createObserverParameter(int block, int number, int part, ValueChangedCallback callback,
                                     VstIObserver::ParamModeType mode);

    /** Creates a part's fourteen parameters in the order of the table. */
    void createVSTPartParameter(UnitID unitId, int part, VstIObserver::ParamModeType mode);

    /** Creates the edit flag's parameter. */
    void createVSTNotAutomationParameter();

    /** The parameter with this ID, borrowed until clear, or null. [host main thread] */
    Parameter* getParameter(unsigned id) const;

    /** Runs access, which reads or sets what the host sees of the parameters, while no other thread
        is at them. It must call nobody. [any thread]
        @return its answer, or none while there are no parameters: before the first was created and
        from clear on, when their container is the host's main thread's alone */
    template <typename Result, typename Access>
    Result withParameters(Result none, Access&& access) const
    {
        const std::lock_guard<std::mutex> guard(parametersLock);
        return parametersByID.empty() ? none : access();
    }

    /** EditorParameter::updateParemeterInfo for a parameter that other threads see as well.
        [host main thread] */
    void refresh(EditorParameter& parameter);

    // A change in the editor, on its way to the host. [any library thread]
    void setEditorParameter(unsigned id, int value);
    /** As setEditorParameter, but a value of 0 is not told to the host. */
    void setEditFlagParameter(unsigned id, int value);
    void setParameterToVST(const EditorParameter* parameter, unsigned id, int value);
    void notificationGuiEvent(GuiEvent kind, unsigned id, double value);

    /** The timer's tick: polls the observers, then passes every queued event to the host.
        [host main thread] */
    void notificationEvent();

    // The host's value, on the library's request. [any library thread]
    void setVSTManageParameter(unsigned id, int value);
    bool isSetVSTValue(unsigned id, double normalized, int& value);

    /** While true, changes in a Unicode host are dropped: the host is being told all values anyway.
        [host main thread] */
    void setConnecting(bool state) { connecting = state; }

    /** Takes every observer from the library and destroys it. Called by terminate, while the
        library is still there. [host main thread] */
    void removeObservers();

    /** Forgets the parameters, which their container is about to destroy, and undelivered events.
        Waits for library threads that are just using a parameter; they call nobody meanwhile.
        Called by initialize and by terminate. [host main thread] */
    void clear();

private:
    using QueuedEvent = std::pair<GuiEvent, std::pair<ParamID, ParamValue>>;

    class Use;

    EditorParameter* find(unsigned id) const;
    IPtr<EditorParameter> make(unsigned id, int32 flags, UnitID unitId, int32 stepCount,
                               const char* title, const EditorParameter* similar = nullptr) const;
    /** The same parameter of the part before this one; null when there is none. */
    EditorParameter* findInPartBefore(const PartParameter& row, int part,
                                      VstIObserver::ParamModeType mode) const;
    /** From here on host and library find the parameter, so it is complete by now. */
    void add(IPtr<EditorParameter> parameter);
    int32 askStepCount(unsigned id) const;
    void dispatch(const QueuedEvent& event);
    void pollObservers();
    void drainQueue();

    VstK2xController& controller;
    ParameterContainer& container;
    const HostAndLibrary& outside;
    std::vector<VstIObserver*> observers; ///< in creation order; may hold nulls
    mutable std::mutex parametersLock;
    std::map<ParamID, EditorParameter*> parametersByID; ///< owned by the controller's container
    int uses = 0;                                       ///< guarded by parametersLock
    std::condition_variable lastUseEnded;
    std::deque<QueuedEvent> guiEvents; ///< guarded by guiEventLock
    bool draining = false;             ///< guarded by guiEventLock
    std::unique_ptr<Base::Thread::FLock> guiEventLock;
    std::atomic<bool> connecting{false};
};

// The callbacks that the editor library gets for every observer; context is a VstK2xController*.
// With a null context they do nothing. [any library thread]
void editorValueChange(void* context, unsigned id, int value);
void editorEditFlagChange(void* context, unsigned id, int value);
void editorBeginEditCallBack(void* context, unsigned id);
void editorEndEditCallBack(void* context, unsigned id);

} // namespace Vst
} // namespace Steinberg
