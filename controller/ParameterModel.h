// ParameterModel: the VST parameters that mirror the editor's, their observers, and sending the
// editor's changes to the host.
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

/** Parameters are created on the host's main thread; changes come on any library thread. In a
    Unicode host a change is sent to the host at once; in another host it waits in a queue that the
    timer drains on the main thread.

    Locks: an EditorParameter's "ParameterFlag" is released before "GuiEventLocker" is taken, and
    "GuiEventLocker" is held while the host is called. One more lock, parametersLock, guards what
    the host sees: the map by ID, the base class's container, and the normalized and default values.
    While it is held, neither host nor library is called and no other lock is taken.

    A callback that comes during terminate finds either no parameter or one that stays alive
    until the callback has finished with it: uses are counted, and clear waits for the last.
    Reference counts of the SDK would not do, because its release reads the count once more after
    changing it. */
class ParameterModel {
public:
    /** What the user does to a parameter in the editor. */
    enum GuiEvent : int32 { GuiEventBeginEdit = 0, GuiEventEndEdit = 1, GuiEventValueChange = 2 };

    /** All three must outlive this object.
        @param controller sends edits to the host; also the context of the library's callbacks
        @param container the controller's container, which has the parameters that the host sees */
    ParameterModel(VstK2xController& controller, ParameterContainer& container,
                   const HostAndLibrary& hostAndLibrary);
    ~ParameterModel();
    ParameterModel(const ParameterModel&) = delete;
    ParameterModel& operator=(const ParameterModel&) = delete;

    /** Creates an observer of an editor parameter, if the library can make one; removeObservers
        destroys it. [host main thread]
        @return the parameter's VST ID, with or without an observer */
    unsigned createObserverParameter(int block, int number, int part, ValueChangedCallback callback,
                                     VstIObserver::ParamModeType mode);

    /** Creates the fourteen parameters of a part (0 to 15) in the order of the table, with their
        observers. [host main thread] */
    void createVSTPartParameter(UnitID unitId, int part, VstIObserver::ParamModeType mode);

    /** Creates the parameter of the edit flag, with its observer. [host main thread] */
    void createVSTNotAutomationParameter();

    /** The parameter with this ID, or null; borrowed, valid until clear. [host main thread] */
    Parameter* getParameter(unsigned id) const;

    /** Calls access under the lock of what the host sees of the parameters. access must call
        neither host nor library. [any thread]
        @return the result of access; or none, without calling it, when there are no parameters:
        before the first is created, and after clear, when only the host's main thread may use
        the container */
    template <typename Result, typename Access>
    Result withParameters(Result none, Access&& access) const
    {
        const std::lock_guard<std::mutex> guard(parametersLock);
        return parametersByID.empty() ? none : access();
    }

    /** EditorParameter::updateParemeterInfo under the lock. [host main thread] */
    void refresh(EditorParameter& parameter);

    // Changes in the editor. An unknown ID does nothing. [any library thread]
    /** Stores an editor value, and sends it to the host if it differs from the former one. */
    void setEditorParameter(unsigned id, int value);
    /** As setEditorParameter, but a value of 0 is not sent to the host. */
    void setEditFlagParameter(unsigned id, int value);
    /** Sends an editor value to the host without storing it. @param parameter converts it; null
        does nothing */
    void setParameterToVST(const EditorParameter* parameter, unsigned id, int value);
    /** Sends an event to the host, at once or through the queue.
        @param value normalized; used for GuiEventValueChange only */
    void notificationGuiEvent(GuiEvent kind, unsigned id, double value);

    /** The timer's tick: polls the observers, then sends every queued event to the host.
        [host main thread] */
    void notificationEvent();

    // What the library asks for. An unknown ID does nothing. [any library thread]
    /** Stores an editor value without telling the host. */
    void setVSTManageParameter(unsigned id, int value);
    /** See VstIControllerInterface::isSetVSTValue. */
    bool isSetVSTValue(unsigned id, double normalized, int& value);

    /** While true, changes in a Unicode host are dropped: connect refreshes all values anyway.
        [host main thread] */
    void setConnecting(bool state) { connecting = state; }

    /** Removes every observer from the library and destroys it. Called by terminate before the
        library is closed. [host main thread] */
    void removeObservers();

    /** Forgets the parameters and the queued events. Called before the container destroys the
        parameters; waits for library threads that are using one. [host main thread] */
    void clear();

private:
    using QueuedEvent = std::pair<GuiEvent, std::pair<ParamID, ParamValue>>;

    class Use;

    EditorParameter* find(unsigned id) const;
    IPtr<EditorParameter> make(unsigned id, int32 flags, UnitID unitId, int32 stepCount,
                               const char* title, const EditorParameter* similar = nullptr) const;
    /** The same parameter of the previous part, or null. */
    EditorParameter* findInPartBefore(const PartParameter& row, int part,
                                      VstIObserver::ParamModeType mode) const;
    /** Makes the parameter visible to host and library. It must be complete by then. */
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

// The callbacks that the editor library gets for every observer. context is the VstK2xController;
// with null they do nothing. [any library thread]
void editorValueChange(void* context, unsigned id, int value);
void editorEditFlagChange(void* context, unsigned id, int value);
void editorBeginEditCallBack(void* context, unsigned id);
void editorEndEditCallBack(void* context, unsigned id);

} // namespace Vst
} // namespace Steinberg
