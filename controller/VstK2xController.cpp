#include "controller/VstK2xController.h"

#include "basics/CallGuard.h"
#include "controller/ControllerState.h"
#include "controller/HostInterface.h"
#include "controller/ParameterTable.h"
#include "editorlib/ConnectionMessages.h"
#include "editorlib/VstIEditorConnect.h"
#include "hostapi/IHostClasses.h"
#include "hostapi/IPortRegistry.h"
#include "presets/VstK2xPresetCreater.h"
#include "view/VstK2xEditorView.h"

#include "pluginterfaces/vst/ivstmessage.h"

#include <algorithm>
#include <cstring>

namespace Steinberg {
namespace Vst {

namespace {

constexpr int kTimerPeriod = 50; // milliseconds

/** The host is to mix the returned audio with the square root of two. */
constexpr float kReturnGain = 1.41421354F;

constexpr size_t kString128Units = 128;

/** Sets ParameterModel's connecting flag until it is destroyed. */
class ConnectingScope {
public:
    explicit ConnectingScope(ParameterModel& scoped)
    : model(scoped)
    {
        model.setConnecting(true);
    }
    ~ConnectingScope() { model.setConnecting(false); }
    ConnectingScope(const ConnectingScope&) = delete;
    ConnectingScope& operator=(const ConnectingScope&) = delete;

private:
    ParameterModel& model;
};

} // namespace

VstK2xController::VstK2xController() = default;
VstK2xController::~VstK2xController() = default;

FUnknown* VstK2xController::createInstance(void* /*context*/)
{
    return static_cast<IEditController*>(new VstK2xController); // untaken: compiler
}

tresult PLUGIN_API VstK2xController::queryInterface(const TUID _iid, void** obj)
{
    QUERY_INTERFACE(_iid, obj, IUnitInfo::iid, IUnitInfo)
    QUERY_INTERFACE(_iid, obj, IExternalEffectUsingSKI::iid, IExternalEffectUsingSKI)
    QUERY_INTERFACE(_iid, obj, IDependent::iid, IDependent)
    return EditController::queryInterface(_iid, obj);
}

/** The host's objects that unbind uses. They are released last, after the base
    class's terminate. */
struct VstK2xController::HostObjects {
    IPtr<IHostClasses> hostClasses;
    IPtr<IUpdateHandler> updateHandler;
    IPtr<IPortRegistry> registry;
};

tresult PLUGIN_API VstK2xController::initialize(FUnknown* context)
{
    hostThread.begin();
    // Without this the base class would accept a second initialize, because it has no context.
    if (life == Life::kFailed)
        return kResultFalse;
    const tresult result = EditController::initialize(context);
    if (result != kResultOk)
        return result;
    guarded([&] { outside.hostContext.set(context); });
    if (life == Life::kInitialized)
        return result;
    life = Life::kInitialized;
    // A library that called back after an earlier terminate may have left events in the queue.
    parameterModel.clear();
    const auto started = guarded<tresult>(kResultFalse, [&] { return initializeBound(context); });
    if (started == kResultOk)
        return started;
    life = Life::kFailed;
    // Memory ran out half-way. Undone here, since a host need not call terminate after a failure.
    if (getEditorConnection()) {
        HostObjects held;
        unbind(held);
        guarded([this] { parameters.removeAll(); });
    }
    return started;
}

tresult VstK2xController::initializeBound(FUnknown* context)
{
    // Destroyed at the end of this function; only the service that it gives is kept.
    EditorLibrary::ServiceGetter serviceGetter;
    if (!outside.library.bind(serviceGetter, context, this))
        return kResultFalse;
    startLibrary();
    guiTimer = VSTGUI::makeOwned<VstTimer>(this, kTimerPeriod);
    guiTimer->timerStart();
    createParameters();
    // When the host throws here its tracks are not followed, but everything else works.
    guarded([this] { routing.readHostVersion(); });
    guarded([this] { routing.startObserving(); });
    return kResultOk;
}

void VstK2xController::startLibrary()
{
    VstIEditorConnect* editor = getEditorConnection();
    guarded([&] { editor->setControllerInterface(this); }); // untaken: compiler
    guarded([&] { editor->setHostType(getVSTHostType()); });
    guarded([&] { editor->start(); });
}

void VstK2xController::createParameters()
{
    for (int part = 0; part < kPartCount; ++part)
        createVSTPartParameter(unitOfPart(part), part,
                               part == 0 ? VstIObserver::ParamModePartVoice
                                         : VstIObserver::ParamModePart);
    createVSTNotAutomationParameter();
}

tresult PLUGIN_API VstK2xController::terminate()
{
    hostThread.check("terminate");
    if (life == Life::kEnded)
        return terminateBase();
    life = Life::kEnded;
    HostObjects held;
    unbind(held);
    return terminateBase();
}

void VstK2xController::unbind(HostObjects& held) noexcept
{
    guarded([this] {
        if (guiTimer)
            guiTimer->timerStop();
    });
    guarded([&] {
        // If the host has left the components connected, tell the processor that the library ends.
        if (getPeer())
            sendDisconnection();
    });
    guarded([&] { held.hostClasses = FUnknownPtr<IHostClasses>(getHostContext()); });
    if (VstIEditorConnect* editor = getEditorConnection()) {
        guarded([&] { editor->setControllerInterface(nullptr); });
        if (outside.library.getBinding() == EditorLibrary::Binding::kService)
            guarded([&] { editor->detachService(); });
    }
    guarded([&] { held.updateHandler = hostInterface<IUpdateHandler>(held.hostClasses); });
    routing.stopObserving(held.updateHandler);
    guarded([&] { held.registry = hostInterface<IPortRegistry>(held.hostClasses); });
    ports.releasePorts(held.registry);
    parameterModel.removeObservers();
    guiTimer = nullptr;
    outside.library.unload();
    outside.library.leaveService(this);
    parameterModel.clear();
}

/** The base class's terminate, which also disconnects a processor that is still connected. */
tresult VstK2xController::terminateBase()
{
    // Other threads use these two, so they are released under their locks, and before the base
    // class clears its own fields.
    guarded([this] { outside.componentHandler.set(nullptr); });
    guarded([this] { outside.hostContext.set(nullptr); });
    return guarded<tresult>(kResultFalse, [this] { return EditController::terminate(); });
}

void PLUGIN_API VstK2xController::update(FUnknown* changedUnknown, int32 message)
{
    guarded([&] { routing.update(changedUnknown, message); });
}

// Connection ------------------------------------------------------------------

tresult PLUGIN_API VstK2xController::connect(IConnectionPoint* other)
{
    hostThread.check("connect");
    tresult result = EditController::connect(other);
    const ConnectingScope connecting(parameterModel);
    if (result == kResultOk)
        result = guarded<tresult>(kResultFalse, [this] { return sendEditorConnection(); });
    guarded([this] { refreshParameters(); });
    if (VstIEditorConnect* editor = getEditorConnection())
        guarded([&] { editor->parametersReady(); });
    return result;
}

tresult VstK2xController::sendEditorConnection()
{
    const IPtr<IMessage> message = owned(allocateMessage());
    if (!message)
        return kResultOk;
    const VstIEditorConnect* editor = getEditorConnection();
    message->setMessageID(kConnectMessageID);
    if (IAttributeList* attributes = message->getAttributes())
        attributes->setBinary(kConnectAttributeID, &editor, sizeof(void*));
    const tresult result = sendMessage(message);
    if (result != kResultOk)
        return result;
    message->setMessageID(kUnicodeHostMessageID);
    if (IAttributeList* attributes = message->getAttributes())
        attributes->setInt(kUnicodeHostAttributeID, isUnicodeAppHost() ? 1 : 0);
    return sendMessage(message);
}

void VstK2xController::refreshParameters()
{
    const int32 count = parameters.getParameterCount();
    for (int32 index = 0; index < count; ++index)
        // untaken: one-class
        if (auto* parameter = FCast<EditorParameter>(parameters.getParameterByIndex(index)))
            parameterModel.refresh(*parameter);
}

tresult PLUGIN_API VstK2xController::disconnect(IConnectionPoint* other)
{
    hostThread.check("disconnect");
    guarded([this] { sendDisconnection(); });
    return EditController::disconnect(other);
}

void VstK2xController::sendDisconnection()
{
    const IPtr<IMessage> message = owned(allocateMessage());
    if (!message)
        return;
    const VstIEditorConnect* editor = getEditorConnection();
    message->setMessageID(kDisconnectMessageID);
    if (IAttributeList* attributes = message->getAttributes())
        attributes->setBinary(kDisconnectAttributeID, &editor, sizeof(void*));
    sendMessage(message);
}

// Parameters ------------------------------------------------------------------

int32 PLUGIN_API VstK2xController::getParameterCount()
{
    return parameterModel.withParameters<int32>(
        0, [this] { return EditController::getParameterCount(); });
}

tresult PLUGIN_API VstK2xController::getParameterInfo(int32 index, ParameterInfo& info)
{
    return parameterModel.withParameters<tresult>(
        kResultFalse, [&] { return EditController::getParameterInfo(index, info); });
}

tresult PLUGIN_API VstK2xController::getParamStringByValue(ParamID id, ParamValue normalized,
                                                           String128 string)
{
    if (!string)
        return kResultFalse;
    return guarded<tresult>(kResultFalse, [&] {
        return parameterModel.withParameters<tresult>(kResultFalse, [&] {
            return EditController::getParamStringByValue(id, normalized, string);
        });
    });
}

tresult PLUGIN_API VstK2xController::getParamValueByString(ParamID id, TChar* string,
                                                           ParamValue& normalized)
{
    if (!string)
        return kResultFalse;
    // Hosts pass a String128, and a text of 128 units in it has no terminator.
    TChar text[kString128Units + 1] = {};
    std::copy(string, std::find(string, string + kString128Units, TChar(0)), text);
    return guarded<tresult>(kResultFalse, [&] {
        return parameterModel.withParameters<tresult>(kResultFalse, [&] {
            return EditController::getParamValueByString(id, text, normalized);
        });
    });
}

ParamValue PLUGIN_API VstK2xController::normalizedParamToPlain(ParamID id, ParamValue normalized)
{
    return parameterModel.withParameters(
        normalized, [&] { return EditController::normalizedParamToPlain(id, normalized); });
}

ParamValue PLUGIN_API VstK2xController::plainParamToNormalized(ParamID id, ParamValue plain)
{
    return parameterModel.withParameters(
        plain, [&] { return EditController::plainParamToNormalized(id, plain); });
}

ParamValue PLUGIN_API VstK2xController::getParamNormalized(ParamID id)
{
    return parameterModel.withParameters<ParamValue>(
        0, [&] { return EditController::getParamNormalized(id); });
}

tresult PLUGIN_API VstK2xController::setParamNormalized(ParamID id, ParamValue value)
{
    return guarded<tresult>(kResultFalse, [&] {
        return parameterModel.withParameters<tresult>(
            kResultFalse, [&] { return EditController::setParamNormalized(id, value); });
    });
}

tresult VstK2xController::beginEdit(ParamID id)
{
    const auto handler = outside.componentHandler.get();
    return handler ? handler->beginEdit(id) : kResultFalse;
}

tresult VstK2xController::performEdit(ParamID id, ParamValue normalized)
{
    const auto handler = outside.componentHandler.get();
    return handler ? handler->performEdit(id, normalized) : kResultFalse;
}

tresult VstK2xController::endEdit(ParamID id)
{
    const auto handler = outside.componentHandler.get();
    return handler ? handler->endEdit(id) : kResultFalse;
}

void VstK2xController::changeLatencyTrigger()
{
    guarded([this] {
        if (const auto handler = outside.componentHandler.get())
            handler->restartComponent(kLatencyChanged);
    });
}

void VstK2xController::storeUserBank(VoiceBank::Bank bank, int index)
{
    guarded([&] {
        VstIEditorConnect* editor = getEditorConnection();
        if (!editor)
            return;
        VstK2xPresetCreater creater(*editor);
        creater.setVoiceDataInfo(bank, index, VstK2xPresetCreater::kAllUserBanks,
                                 VstK2xPresetCreater::kUserFolder);
    });
}

// Ports -----------------------------------------------------------------------

int32 PLUGIN_API VstK2xController::hostReadyForSetPortConnections()
{
    hostThread.check("hostReadyForSetPortConnections");
    if (ports.hostReadyForSetPortConnections())
        guarded([this] { changeLatencyTrigger(); });
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::getReturnGain(float& gain)
{
    gain = kReturnGain;
    return kResultOk;
}

// State -----------------------------------------------------------------------

tresult PLUGIN_API VstK2xController::setComponentState(IBStream* /*state*/)
{
    hostThread.check("setComponentState");
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::getState(IBStream* /*state*/)
{
    hostThread.check("getState");
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::setState(IBStream* state)
{
    hostThread.check("setState");
    guarded([&] { applyPresetFile(getEditorConnection(), state); });
    return kResultOk;
}

IPlugView* PLUGIN_API VstK2xController::createView(FIDString name)
{
    hostThread.check("createView");
    if (!name || std::strcmp(name, ViewType::kEditor) != 0)
        return nullptr;
    return guarded<IPlugView*>(nullptr, [this] {
        // untaken: compiler
        return static_cast<IPlugView*>(new VstK2xEditorView(this, getEditorConnection()));
    });
}

tresult PLUGIN_API VstK2xController::setComponentHandler(IComponentHandler* handler)
{
    hostThread.check("setComponentHandler");
    guarded([&] { outside.componentHandler.set(handler); });
    return guarded<tresult>(kResultTrue,
                            [&] { return EditController::setComponentHandler(handler); });
}

tresult PLUGIN_API VstK2xController::setPluginInfo(VstIEditorConnect* connect, void* libraryHandle)
{
    outside.library.setPluginInfo(connect, libraryHandle);
    return kResultOk;
}

} // namespace Vst
} // namespace Steinberg
