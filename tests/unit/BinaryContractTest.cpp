// The virtual tables and IDs that other people's hosts and editor libraries are compiled against.
// No compiler tells when a slot moves.
#include "basics/PlugInInfo.h"
#include "controller/VstK2xController.h"
#include "editorlib/EditorLibrary.h"
#include "editorlib/EditorLibraryNames.h"
#include "editorlib/EntryPoints.h"
#include "editorlib/IExtensionVSTServiceGetter.h"
#include "editorlib/IExternalPlugin.h"
#include "editorlib/VstIControllerInterface.h"
#include "editorlib/VstIEditorConnect.h"
#include "editorlib/VstIEffectInterface.h"
#include "hostapi/HostInterfaces.h"
#include "hostapi/IExternalEffectUsingSKI.h"
#include "processor/VstK2x.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <type_traits>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

/** The slot of a virtual operation, which the Itanium C++ ABI keeps in a pointer to the operation;
    -1 for an operation that is not virtual. */
template <typename Operation>
int slotOf(Operation operation)
{
    struct {
        std::ptrdiff_t pointer;
        std::ptrdiff_t adjustment;
    } parts{};
    static_assert(sizeof(parts) == sizeof(operation), "pointer to member of the Itanium C++ ABI");
    std::memcpy(&parts, &operation, sizeof(parts));
#if defined(__arm__) || defined(__aarch64__)
    const bool isVirtual = (parts.adjustment & 1) != 0;
    const std::ptrdiff_t offset = parts.pointer;
#else
    const bool isVirtual = (parts.pointer & 1) != 0;
    const std::ptrdiff_t offset = parts.pointer - 1;
#endif
    return isVirtual ? static_cast<int>(offset / static_cast<std::ptrdiff_t>(sizeof(void*))) : -1;
}

/** Checks an operation's slot and its exact signature. */
#define EXPECT_SLOT(slot, Result, Class, operation, arguments)                                     \
    EXPECT_EQ(slotOf(static_cast<Result(Class::*) arguments>(&Class::operation)), slot);           \
    static_assert(std::is_same_v<decltype(&Class::operation), Result(Class::*) arguments>,         \
                  #operation)

template <typename Interface>
void expectNoDestructorInTable()
{
    static_assert(!std::has_virtual_destructor_v<Interface>,
                  "a virtual destructor would take two slots");
}

TEST(BinaryContract, EditorConnectionHas47Slots)
{
    using C = VstIEditorConnect;
    using Bytes = std::vector<char>;
    expectNoDestructorInTable<C>();
    EXPECT_SLOT(0, void, C, destroy, ());
    EXPECT_SLOT(1, void, C, start, ());
    EXPECT_SLOT(2, void, C, attachService, ());
    EXPECT_SLOT(3, void, C, detachService, ());
    EXPECT_SLOT(4, int32, C, prepareEditor, (void*, const char*));
    EXPECT_SLOT(5, int32, C, getEditorRect, (ViewRect*));
    EXPECT_SLOT(6, int32, C, openEditor, (void*, const ViewRect*));
    EXPECT_SLOT(7, int32, C, closeEditor, ());
    EXPECT_SLOT(8, int32, C, editorOpened, ());
    EXPECT_SLOT(9, int32, C, addObserver, (VstIObserver*));
    EXPECT_SLOT(10, int32, C, removeObserver, (VstIObserver*));
    EXPECT_SLOT(11, void, C, parametersReady, ());
    EXPECT_SLOT(12, int32, C, getParameterStepCount, (uint32));
    EXPECT_SLOT(13, void, C, hostParameterChanged, (uint32, double));
    EXPECT_SLOT(14, int32, C, getParameterValue, (uint32));
    EXPECT_SLOT(15, int32, C, getParameterMin, (uint32));
    EXPECT_SLOT(16, int32, C, getParameterMax, (uint32));
    EXPECT_SLOT(17, int32, C, getParameterValueString, (uint32, int32, std::string&));
    EXPECT_SLOT(18, void, C, setStateChunk, (const void*, int32));
    EXPECT_SLOT(19, Bytes, C, getStateChunk, ());
    EXPECT_SLOT(20, void, C, receiveHostMidi, (const uint8*, int32));
    EXPECT_SLOT(21, void, C, reserved21, ());
    EXPECT_SLOT(22, int32, C, getCategoryName, (int32, char*));
    EXPECT_SLOT(23, int32, C, getSubCategoryName, (int32, int32, char*));
    EXPECT_SLOT(24, int32, C, applyPreset, (int32, int32));
    EXPECT_SLOT(25, int32, C, getVoiceDataString, (int32, int32, char*));
    EXPECT_SLOT(26, int32, C, findParameter, (int32, int32, uint32&));
    EXPECT_SLOT(27, void, C, onHostPortsReady, (bool));
    EXPECT_SLOT(28, void, C, onInitialStartFileLoad, (bool));
    EXPECT_SLOT(29, void, C, syncPartToMidiChannel, (int32));
    EXPECT_SLOT(30, Bytes, C, getUserBankData, (int32, int32));
    EXPECT_SLOT(31, int32, C, applyUserBank, (int32, int32, const char*, int32));
    EXPECT_SLOT(32, void, C, setEffectInterface, (VstIEffectInterface*));
    EXPECT_SLOT(33, void, C, setControllerInterface, (VstIControllerInterface*));
    EXPECT_SLOT(34, void, C, reserved34, ());
    EXPECT_SLOT(35, int32, C, getLatencyMode, ());
    EXPECT_SLOT(36, int32, C, getFirstStartState, ());
    EXPECT_SLOT(37, bool, C, isDisplayAudioPort, (const char*));
    EXPECT_SLOT(38, void, C, setEffectOption, (bool));
    EXPECT_SLOT(39, bool, C, matchRegularExpression, (const char*, const char*));
    EXPECT_SLOT(40, int32, C, onFocus, (bool));
    EXPECT_SLOT(41, bool, C, onKeyDown, (char, int16, int16));
    EXPECT_SLOT(42, bool, C, onKeyUp, (char, int16, int16));
    EXPECT_SLOT(43, bool, C, onWheel, (float));
    EXPECT_SLOT(44, int32, C, setStateText, (const char16*));
    EXPECT_SLOT(45, void, C, setHostType, (int32));
    EXPECT_SLOT(46, int32, C, getStateFormat, ());
}

TEST(BinaryContract, ObserverHasSevenSlots)
{
    using C = VstIObserver;
    expectNoDestructorInTable<C>();
    EXPECT_SLOT(0, void, C, destroy, ());
    EXPECT_SLOT(1, void, C, reserved1, ());
    EXPECT_SLOT(2, void, C, reserved2, ());
    EXPECT_SLOT(3, void, C, reserved3, ());
    EXPECT_SLOT(4, void, C, reserved4, ());
    EXPECT_SLOT(5, void, C, reserved5, ());
    EXPECT_SLOT(6, void, C, checkChange, ());
    static_assert(std::is_same_v<std::underlying_type_t<C::ParamModeType>, int>);
    static_assert(std::is_convertible_v<C::ParamModeType, int>, "a plain enumeration");
}

TEST(BinaryContract, ControllerInterfaceHasThirteenSlots)
{
    using C = VstIControllerInterface;
    using AudioPorts = std::vector<VSTiAudioPort::AudioPortInfo>*;
    using MidiPorts = std::vector<VSTiMidiPort::MidiOutPortInfo>*;
    expectNoDestructorInTable<C>();
    EXPECT_SLOT(0, AudioPorts, C, getAudioPortList, ());
    EXPECT_SLOT(1, void, C, setAudioPortList, (const char**));
    EXPECT_SLOT(2, MidiPorts, C, getMidiOutPortList, ());
    EXPECT_SLOT(3, void, C, setMidiOutPort, (const char*));
    EXPECT_SLOT(4, void, C, editorPartSyncMidiCh, (unsigned int));
    EXPECT_SLOT(5, void, C, storeUserBank, (VoiceBank::Bank, int));
    EXPECT_SLOT(6, void, C, setVSTManageParameter, (unsigned int, int));
    EXPECT_SLOT(7, void, C, setInitialStartFileLoad, (bool));
    EXPECT_SLOT(8, bool, C, isConnectAudioPort, ());
    EXPECT_SLOT(9, bool, C, isSetVSTValue, (unsigned int, double, int&));
    EXPECT_SLOT(10, void, C, changeLatencyTrigger, ());
    EXPECT_SLOT(11, bool, C, isConnectAudioPortHost, ());
    EXPECT_SLOT(12, bool, C, isHostReadyForSetPort, ());
    static_assert(std::is_same_v<std::underlying_type_t<VoiceBank::Bank>, int>);
    static_assert(std::is_convertible_v<VoiceBank::Bank, int>, "a plain enumeration");
}

TEST(BinaryContract, EffectInterfaceHasOneSlot)
{
    expectNoDestructorInTable<VstIEffectInterface>();
    EXPECT_SLOT(0, void, VstIEffectInterface, writeMidi, (const void*, int));
}

template <typename Record>
void expectNameThenID()
{
    EXPECT_EQ(offsetof(Record, portName), 0u);
    EXPECT_EQ(offsetof(Record, portId), sizeof(std::string));
    EXPECT_EQ(sizeof(Record), 2 * sizeof(std::string));
    static_assert(std::is_same_v<decltype(Record::portName), std::string>);
    static_assert(std::is_same_v<decltype(Record::portId), std::string>);
}

TEST(BinaryContract, PortRecordsAreNameThenID)
{
    expectNameThenID<VSTiAudioPort::AudioPortInfo>();
    expectNameThenID<VSTiMidiPort::MidiOutPortInfo>();
}

TEST(BinaryContract, EntryPointsTakeWhatLibrariesExpect)
{
    static_assert(std::is_same_v<GetEditorConnect, void (*)(VstIEditorConnect**)>);
    static_assert(
        std::is_same_v<GetObserver,
                       void (*)(VstIObserver**, void*, int, int, int, int,
                                void (*)(void*, unsigned, int), VstIObserver::ParamModeType,
                                void (*)(void*, unsigned), void (*)(void*, unsigned))>);
    EXPECT_STREQ(connectFuncName, "getVSTEditorConnectObject");
    EXPECT_STREQ(observerFuncName, "getVSTObserverObject");
}

TEST(BinaryContract, ServiceTables)
{
    EXPECT_SLOT(3, FUnknown*, IExtensionVSTServiceGetter, getService, ());
    EXPECT_SLOT(3, tresult, IExtensionVSTService, registerPlugin, (IExternalPlugin*));
    EXPECT_SLOT(4, tresult, IExtensionVSTService, unregisterPlugin, (IExternalPlugin*));
    EXPECT_SLOT(3, tresult, IExternalPlugin, setPluginInfo, (VstIEditorConnect*, void*));
    EXPECT_SLOT(3, FUnknown*, IComponentFactory, createComponent, (const char*, const char*));
    EXPECT_SLOT(4, void, IComponentFactory, destroyComponent, (FUnknown*));
    expectNoDestructorInTable<IExtensionVSTServiceGetter>();
    expectNoDestructorInTable<IExtensionVSTService>();
    expectNoDestructorInTable<IExternalPlugin>();
}

TEST(BinaryContract, HostTables)
{
    EXPECT_SLOT(3, tresult, IHostClasses, getHostInterface, (const TUID, void**));
    EXPECT_SLOT(3, const char16*, IHostApplicationW, getApplicationName, ());
    EXPECT_SLOT(4, const char16*, IHostApplicationW, getVersionString, ());
    EXPECT_SLOT(5, tresult, IHostApplicationW, getCharacterSet, ());
    EXPECT_SLOT(3, int32, IPortRegistry, getPortCount, ());
    EXPECT_SLOT(4, IHostPort*, IPortRegistry, getPortByIndex, (int32));
    EXPECT_SLOT(5, IHostPort*, IPortRegistry, findPortById, (const char*));
    EXPECT_SLOT(6, int32, IPortRegistry, removeFromAllMidiInputs, (IHostPort*));
    EXPECT_SLOT(3, bool, IHostPort, getPortId, (StringObject&));
    EXPECT_SLOT(4, bool, IHostPort, isPortType, (const char*));
    EXPECT_SLOT(5, bool, IHostPort, hasPortAttribute, (const char*));
    EXPECT_SLOT(6, bool, IHostPort, isInputPort, ());
    EXPECT_SLOT(7, const char16*, IHostPort, getSystemName, ());
    EXPECT_SLOT(9, const char16*, IHostPort, getDisplayName, ());
    EXPECT_SLOT(11, bool, IHostPort, isDisplayed, ());
    EXPECT_SLOT(12, void, IHostPort, setDisplayed, (bool));
    EXPECT_SLOT(3, tresult, IComponentPortHandler, setAudioInputBuses,
                (int32, int32, IBusDescriptor**, int32));
    EXPECT_SLOT(4, tresult, IComponentPortHandler, setMidiOutputPorts,
                (IHostPort**, int32, IHostPort**, int32));
    EXPECT_SLOT(3, void, IBusDescriptor, setArrangement, (int64));
    EXPECT_SLOT(6, void, IBusDescriptor, setChannelPort, (int32, IHostPort*));
    EXPECT_SLOT(6, IDevice*, IDeviceList, findDevice, (const char*, int32));
    EXPECT_SLOT(3, const char*, IDevice, getDeviceType, ());
    EXPECT_SLOT(8, IValue*, IDevice, getValue, (const char*));
    EXPECT_SLOT(10, int32, IDevice, countChildren, ());
    EXPECT_SLOT(11, IDevice*, IDevice, getChild, (int32));
    EXPECT_SLOT(5, int32, IValue, getInteger, ());
    EXPECT_SLOT(17, void, IValue, getString, (char16*, int32*));
    EXPECT_SLOT(19, void, IValue, setInteger, (int32, bool));
    EXPECT_SLOT(4, bool, IConnector, isConnectedTo, (IDevice*));
    EXPECT_SLOT(3, int32, IExternalEffectUsingSKI, hostReadyForSetPortConnections, ());
    EXPECT_SLOT(4, tresult, IExternalEffectUsingSKI, getReturnGain, (float&));
}

TEST(BinaryContract, ReservedSlotsOfTheHostAreNamedByTheirNumbers)
{
    EXPECT_SLOT(8, void, IHostPort, reserved8, ());
    EXPECT_SLOT(10, void, IHostPort, reserved10, ());
    EXPECT_SLOT(4, void, IBusDescriptor, reserved4, ());
    EXPECT_SLOT(5, void, IBusDescriptor, reserved5, ());
    EXPECT_SLOT(3, void, IDeviceList, reserved3, ());
    EXPECT_SLOT(4, void, IDeviceList, reserved4, ());
    EXPECT_SLOT(5, void, IDeviceList, reserved5, ());
    EXPECT_SLOT(4, void, IDevice, reserved4, ());
    EXPECT_SLOT(5, void, IDevice, reserved5, ());
    EXPECT_SLOT(6, void, IDevice, reserved6, ());
    EXPECT_SLOT(7, void, IDevice, reserved7, ());
    EXPECT_SLOT(9, void, IDevice, reserved9, ());
    EXPECT_SLOT(3, void, IValue, reserved3, ());
    EXPECT_SLOT(4, void, IValue, reserved4, ());
    EXPECT_SLOT(6, void, IValue, reserved6, ());
    EXPECT_SLOT(7, void, IValue, reserved7, ());
    EXPECT_SLOT(8, void, IValue, reserved8, ());
    EXPECT_SLOT(9, void, IValue, reserved9, ());
    EXPECT_SLOT(10, void, IValue, reserved10, ());
    EXPECT_SLOT(11, void, IValue, reserved11, ());
    EXPECT_SLOT(12, void, IValue, reserved12, ());
    EXPECT_SLOT(13, void, IValue, reserved13, ());
    EXPECT_SLOT(14, void, IValue, reserved14, ());
    EXPECT_SLOT(15, void, IValue, reserved15, ());
    EXPECT_SLOT(16, void, IValue, reserved16, ());
    EXPECT_SLOT(18, void, IValue, reserved18, ());
    EXPECT_SLOT(3, void, IConnector, reserved3, ());
}

TEST(BinaryContract, HostTablesHoldNoDestructor)
{
#define EXPECT_NO_DESTRUCTOR(Interface, ...) expectNoDestructorInTable<Interface>();
    VSTK2X_HOST_INTERFACES(EXPECT_NO_DESTRUCTOR)
    expectNoDestructorInTable<IExternalEffectUsingSKI>();
}

/** The offset of each of an object's base classes, from the object's address. */
template <typename... Faces, typename Object>
std::vector<std::ptrdiff_t> offsetsOf(Object* object)
{
    const auto* begin = reinterpret_cast<const char*>(object);
    return {reinterpret_cast<const char*>(static_cast<Faces*>(object)) - begin...};
}

TEST(BinaryContract, ObjectsBeginWithTheSdksClassAndKeepTheirFacesInOrder)
{
    const auto controller = owned(new VstK2xController);
    const auto faces = offsetsOf<EditController, IUnitInfo, IExternalEffectUsingSKI,
                                 VstIControllerInterface, IExternalPlugin>(controller.get());
    EXPECT_EQ(faces[0], 0);
    EXPECT_TRUE(std::is_sorted(faces.begin(), faces.end()));
    const auto processor = owned(new VstK2x);
    const auto others = offsetsOf<AudioEffect, VstIEffectInterface>(processor.get());
    EXPECT_EQ(others[0], 0);
    EXPECT_GT(others[1], 0);
}

struct NamedID {
    const FUID& id;
    const char* digits;
};

TEST(BinaryContract, InterfaceIDs)
{
    const NamedID table[] = {
        {IExtensionVSTServiceGetter::iid, "7558EAE0B6F04AE6AA8C70A1989A5B4B"},
        {IExternalPlugin::iid, "F02E0078F0DF4BD29ABF53B055261EDB"},
        {IHostClasses::iid, "B9034790DC1F4E25BC0A005C4249B56E"},
        {IComponentFactory::iid, "4BE2B2D4DF6A48AEBFD56DE2E62A372B"},
        {IHostApplicationW::iid, "D138A3845EEA4162ABB5BF8BD66ECDBB"},
        {IHostApplicationA::iid, "3772AD5B4EF545FB9425DC130860C2CD"},
        {IPortRegistry::iid, "E617B70F48664A70AE892C5E8C422587"},
        {IHostPort::iid, "3EE46D9C7CD04AC2962D2A59474C92FF"},
        {IComponentPortHandler::iid, "5E76F6C733A34193817123D73E68DAB2"},
        {IBusDescriptor::iid, "E0E796D50A3E4040B3737B8D6A9C1129"},
        {IDeviceList::iid, "72276C73804C4535BFE93206C28AB493"},
        {IDevice::iid, "8ABE6DFAE593497799560499A07A7805"},
        {IValue::iid, "94FEA075CA454FC98C4CC136DCA1A68F"},
        {IConnector::iid, "CC240ACBAE814EAE8BC198E5DC697043"},
        {IExternalEffectUsingSKI::iid, "1FF368E520AA42B79CDA0A93EE62E09C"},
    };
    for (const auto& row : table) {
        char digits[33] = {};
        row.id.toString(digits);
        EXPECT_STREQ(digits, row.digits);
    }
}

std::string hexOf(const TUID id)
{
    std::string result;
    for (int index = 0; index < 16; ++index) {
        char digits[3];
        std::snprintf(digits, sizeof(digits), "%02X", static_cast<unsigned char>(id[index]));
        result += digits;
    }
    return result;
}

TEST(BinaryContract, IDsAreStoredMostSignificantByteFirst)
{
    TUID id{};
    kProcessorUID.toTUID(id);
    EXPECT_EQ(hexOf(id), "13EEE3484D664261B90352CE35DD18B4");
    kControllerUID.toTUID(id);
    EXPECT_EQ(hexOf(id), "31DFD31BDBB84D128E0ABBC94E1BB134");
    EXPECT_EQ(hexOf(IDeviceNotUnicodeID), "AFAFA326B47643EA9C30EBA4E3D07D4A");
    EXPECT_EQ(hexOf(IValueNotUnicodeID), "C5E2097C91564CE8A62E2FB216DAFFE6");
}

TEST(BinaryContract, ServiceComponentIsAskedForBy32UpperCaseDigits)
{
    EXPECT_EQ(serviceComponentID(), "BBA9E2BA9E28483CAA608081B0166B85");
    EXPECT_STREQ(kServiceKey, "UID");
}

TEST(BinaryContract, LibraryPathHasTheUpperCaseFolderAndTheLowerCaseFile)
{
    EXPECT_EQ(editorLibraryPath(), "/Library/Application Support/Tavrin/VST/RDL3_RDL5/"
                                   "libvst_rdl3_rdl5_vstserver.1.dylib");
    EXPECT_STREQ(dllNameFront, "libvst_");
    EXPECT_STREQ(dllNameBack, "_vstserver");
    EXPECT_STREQ(libraryExtension, ".1.dylib");
    EXPECT_STREQ(dllInstallPath, "/Library/Application Support/Tavrin/VST/");
}

} // namespace
