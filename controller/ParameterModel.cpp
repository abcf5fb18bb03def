#include "controller/ParameterModel.h"

#include "basics/CallGuard.h"
#include "controller/HostAndLibrary.h"
#include "controller/ParameterTable.h"
#include "controller/VstK2xController.h"
#include "editorlib/VstIEditorConnect.h"

#include <cstdio>
#include <memory>

namespace Steinberg {
namespace Vst {

using Base::Thread::FGuard;
using Base::Thread::FLock;

namespace {

/** Gives the container the caller's reference to the parameter; releases it when that throws. */
void addTo(ParameterContainer& container, Parameter* parameter)
{
    const IPtr<Parameter> kept(parameter);
    const int32 references = parameter->getRefCount();
    try {
        container.addParameter(parameter);
    } catch (...) {
        // If the container's list could not grow, the container has released the reference already.
        if (parameter->getRefCount() == references)
            parameter->release();
        throw;
    }
}

} // namespace

/** Finds a parameter and keeps clear from returning while it is in use. Calls neither host nor
    library while it lives. */
class ParameterModel::Use {
public:
    Use(ParameterModel& used, unsigned id)
    : model(used)
    {
        const std::lock_guard<std::mutex> guard(model.parametersLock);
        parameter = model.find(id);
        ++model.uses;
    }
    ~Use()
    {
        const std::lock_guard<std::mutex> guard(model.parametersLock);
        if (--model.uses == 0)
            model.lastUseEnded.notify_all();
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

    explicit operator bool() const { return parameter != nullptr; }
    EditorParameter* operator->() const { return parameter; }

private:
    ParameterModel& model;
    EditorParameter* parameter;
};

ParameterModel::ParameterModel(VstK2xController& owner, ParameterContainer& ownersContainer,
                               const HostAndLibrary& hostAndLibrary)
: controller(owner)
, container(ownersContainer)
, outside(hostAndLibrary)
, guiEventLock(std::make_unique<FLock>("GuiEventLocker"))
{
}

ParameterModel::~ParameterModel() = default;

unsigned ParameterModel::createObserverParameter(int block, int number, int part,
                                                 ValueChangedCallback callback,
                                                 VstIObserver::ParamModeType mode)
{
    const unsigned id = vstParameterID(block, number, part, mode);
    const GetObserver makeObserver = outside.library.findObserverEntry();
    if (!makeObserver)
        return id;
    // The list grows before the observer is made: if it could not grow afterwards, the observer
    // could be neither kept nor destroyed.
    observers.push_back(nullptr);
    VstIObserver* observer = nullptr;
    guarded([&] {
        makeObserver(&observer, &controller, static_cast<int>(id), block, number, part, callback,
                     mode, editorBeginEditCallBack, editorEndEditCallBack);
    });
    if (VstIEditorConnect* editor = outside.library.getConnection()) // untaken: library-is-there
        guarded([&] { editor->addObserver(observer); });
    observers.back() = observer;
    return id;
}

IPtr<EditorParameter> ParameterModel::make(unsigned id, int32 flags, UnitID unitId, int32 stepCount,
                                           const char* title, const EditorParameter* similar) const
{
    // untaken: new-throws
    return owned(new EditorParameter(outside.library.getConnection(), flags, id, unitId, stepCount,
                                     title, similar));
}

EditorParameter* ParameterModel::findInPartBefore(const PartParameter& row, int part,
                                                  VstIObserver::ParamModeType mode) const
{
    // Only this thread changes the map, so reading it here needs no lock.
    return part > 0 ? find(vstParameterID(row.block, row.number, part - 1, mode)) : nullptr;
}

void ParameterModel::add(IPtr<EditorParameter> parameter)
{
    EditorParameter* borrowed = parameter;
    const std::lock_guard<std::mutex> guard(parametersLock);
    addTo(container, parameter.take());
    parametersByID[borrowed->getInfo().id] = borrowed;
}

int32 ParameterModel::askStepCount(unsigned id) const
{
    VstIEditorConnect* editor = outside.library.getConnection();
    return editor ? guarded<int32>(0, [&] { return editor->getParameterStepCount(id); }) : 0;
}

void ParameterModel::createVSTPartParameter(UnitID unitId, int part,
                                            VstIObserver::ParamModeType mode)
{
    for (const PartParameter& row : kPartParameters) {
        const unsigned id =
            createObserverParameter(row.block, row.number, part, editorValueChange, mode);
        char title[64];
        std::snprintf(title, sizeof(title), row.title, part + 1);
        const int32 stepCount = row.asksForStepCount ? askStepCount(id) : 0;
        auto parameter = make(id, ParameterInfo::kCanAutomate, unitId, stepCount, title,
                              findInPartBefore(row, part, mode));
        parameter->setHasValueTexts(true);
        parameter->setTextParser(row.parser, row.parseOffset);
        add(parameter);
    }
}

void ParameterModel::createVSTNotAutomationParameter()
{
    const unsigned id = createObserverParameter(
        kEditFlagBlock, kEditFlagNumber, 0, editorEditFlagChange, VstIObserver::ParamModePartVoice);
    add(make(id, ParameterInfo::kNoFlags, kNoParentUnitId, askStepCount(id), ""));
}

EditorParameter* ParameterModel::find(unsigned id) const
{
    const auto found = parametersByID.find(id);
    return found == parametersByID.end() ? nullptr : found->second;
}

Parameter* ParameterModel::getParameter(unsigned id) const
{
    const std::lock_guard<std::mutex> guard(parametersLock);
    return find(id);
}

void ParameterModel::refresh(EditorParameter& parameter)
{
    // Without the lock: the library may wait for a thread of its own that calls back and needs it.
    const double normalized = parameter.takeOverEditorValue();
    const std::lock_guard<std::mutex> guard(parametersLock);
    parameter.showToHost(normalized);
}

void ParameterModel::setEditorParameter(unsigned id, int value)
{
    double normalized = 0;
    {
        const Use parameter(*this, id);
        if (!parameter || !parameter->changeEditorParameter(value))
            return;
        normalized = parameter->convertToVSTParameter(value);
    }
    if (outside.library.getConnection())
        notificationGuiEvent(GuiEventValueChange, id, normalized);
}

void ParameterModel::setEditFlagParameter(unsigned id, int value)
{
    if (value != 0)
        setEditorParameter(id, value);
    else
        setVSTManageParameter(id, value);
}

void ParameterModel::setParameterToVST(const EditorParameter* parameter, unsigned id, int value)
{
    if (parameter && outside.library.getConnection())
        notificationGuiEvent(GuiEventValueChange, id, parameter->convertToVSTParameter(value));
}

void ParameterModel::notificationGuiEvent(GuiEvent kind, unsigned id, double value)
{
    const QueuedEvent event(kind, {id, value});
    if (outside.isUnicodeHost()) {
        if (!connecting)
            dispatch(event);
        return;
    }
    const FGuard guard(*guiEventLock);
    guiEvents.push_back(event);
}

void ParameterModel::dispatch(const QueuedEvent& event)
{
    const auto [id, value] = event.second;
    switch (event.first) {
    case GuiEventBeginEdit:
        controller.beginEdit(id);
        break;
    case GuiEventEndEdit:
        controller.endEdit(id);
        break;
    case GuiEventValueChange:
        controller.setParamNormalized(id, value);
        controller.performEdit(id, value);
        break;
    }
}

void ParameterModel::notificationEvent()
{
    pollObservers();
    drainQueue();
}

void ParameterModel::pollObservers()
{
    // By index, because a callback may lead to terminate, which empties the list.
    for (size_t index = 0; index < observers.size(); ++index)
        if (VstIObserver* observer = observers[index])
            guarded([observer] { observer->checkChange(); });
}

void ParameterModel::drainQueue()
{
    for (;;) {
        const FGuard guard(*guiEventLock);
        // A host that runs its event loop inside a call can tick again. The outer drain, which is
        // still running, sends the rest.
        if (draining || guiEvents.empty())
            return;
        draining = true;
        guarded([this] { dispatch(guiEvents.front()); });
        draining = false;
        if (!guiEvents.empty())
            guiEvents.pop_front();
    }
}

void ParameterModel::setVSTManageParameter(unsigned id, int value)
{
    const Use parameter(*this, id);
    if (parameter)
        parameter->setEditorParameter(value);
}

bool ParameterModel::isSetVSTValue(unsigned id, double normalized, int& value)
{
    value = 0;
    const Use parameter(*this, id);
    if (!parameter)
        return false;
    const int32 editorValue = parameter->convertToEditorValue(normalized);
    if (!parameter->changeEditorParameter(editorValue))
        return false;
    value = editorValue;
    return true;
}

void ParameterModel::removeObservers()
{
    VstIEditorConnect* editor = outside.library.getConnection();
    const std::vector<VstIObserver*> removed = std::exchange(observers, {});
    for (VstIObserver* observer : removed) {
        if (!observer)
            continue;
        if (editor) // untaken: library-is-there
            guarded([&] { editor->removeObserver(observer); });
        guarded([observer] { observer->destroy(); });
    }
}

void ParameterModel::clear()
{
    {
        std::unique_lock<std::mutex> guard(parametersLock);
        parametersByID.clear();
        lastUseEnded.wait(guard, [this] { return uses == 0; });
    }
    const FGuard guard(*guiEventLock);
    guiEvents.clear();
}

void editorValueChange(void* context, unsigned id, int value)
{
    if (context)
        static_cast<VstK2xController*>(context)->setEditorParameter(id, value);
}

void editorEditFlagChange(void* context, unsigned id, int value)
{
    if (context)
        static_cast<VstK2xController*>(context)->setEditFlagParameter(id, value);
}

void editorBeginEditCallBack(void* context, unsigned id)
{
    if (context)
        static_cast<VstK2xController*>(context)->editorBeginEdit(id);
}

void editorEndEditCallBack(void* context, unsigned id)
{
    if (context)
        static_cast<VstK2xController*>(context)->editorEndEdit(id);
}

} // namespace Vst
} // namespace Steinberg
