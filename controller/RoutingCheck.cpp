#include "controller/RoutingCheck.h"

#include "basics/PlugInInfo.h"
#include "controller/HostAndLibrary.h"
#include "controller/HostInterface.h"
#include "hostapi/IValue.h"
#include "support/CharacterConvert.h"

#include <cstring>

namespace Steinberg {
namespace Vst {

namespace {

constexpr auto kOutputSeparator = " - "; ///< between device and plug-in in an output's text
constexpr auto kMixerOfInstruments = "VST Mixer";
constexpr auto kInstrumentFolder = "VST Project Instruments";
constexpr int32 kTextUnits = 256;

bool isOfType(IDevice& device, const char* type)
{
    const char* deviceType = device.getDeviceType();
    return deviceType && std::strcmp(deviceType, type) == 0;
}

/** The connector of an instrument's first output, or null. */
IPtr<IConnector> outputConnector(IDevice& instrument)
{
    if (instrument.countChildren() <= 0)
        return {};
    return FUnknownPtr<IConnector>(instrument.getChild(0));
}

} // namespace

RoutingCheck::RoutingCheck(const HostAndLibrary& hostAndLibrary, bool throughInstrumentRack)
: outside(hostAndLibrary)
, useInstrumentRack(throughInstrumentRack)
{
}

bool RoutingCheck::isRoutedHere(IValue* output, IDevice* track)
{
    if (!useInstrumentRack)
        return containsText(output, textOfOutputHere());
    return track && containsText(effectTypeOf(track), kPlugInName); // untaken: compiler
}

bool RoutingCheck::containsText(IValue* value, const std::string& text)
{
    if (!value)
        return false;
    char16 buffer[kTextUnits] = {};
    int32 size = kTextUnits;
    value->getString(buffer, &size);
    // A text that fills the buffer may lack its terminator.
    const std::string said = CharacterConvert::ConvertHostText(buffer, isUnicode(), kTextUnits);
    return said.find(text) != std::string::npos;
}

const std::string& RoutingCheck::textOfOutputHere()
{
    if (outputHere.empty())
        outputHere = std::string(kOutputSeparator) + kPlugInName;
    return outputHere;
}

bool RoutingCheck::isUnicode()
{
    if (!unicode)
        unicode = outside.isUnicodeHost();
    return *unicode;
}

/** The "effectType" value of the first instrument that is connected to the track and has one. */
IPtr<IValue> RoutingCheck::effectTypeOf(IDevice* track)
{
    IDevice* rack = instrumentFolder();
    if (!rack)
        return {};
    forgetChangedRack(*rack);
    for (size_t place = 0; place < instruments.size() || walkOn(*rack); ++place) {
        const Instrument& instrument = instruments[place];
        if (!instrument.connector->isConnectedTo(track))
            continue;
        if (auto effectType = owned(instrument.device->getValue("effectType")))
            return effectType;
    }
    return {};
}

void RoutingCheck::forgetChangedRack(IDevice& rack)
{
    if (walked == 0 || rack.countChildren() == countAtStart)
        return;
    instruments.clear();
    walked = 0;
}

/** Adds the next instrument of the rack that has a connector. @return false when there is none */
bool RoutingCheck::walkOn(IDevice& rack)
{
    for (int32 count = rack.countChildren(); walked < count; count = rack.countChildren()) {
        if (walked == 0)
            countAtStart = count;
        IDevice* instrument = rack.getChild(walked++);
        auto connector = instrument ? outputConnector(*instrument) : IPtr<IConnector>();
        if (!connector)
            continue;
        instruments.push_back({instrument, connector});
        return true;
    }
    return false;
} // untaken: compiler

IDevice* RoutingCheck::instrumentFolder()
{
    if (!foundFolder)
        foundFolder = findInstrumentFolder();
    return *foundFolder;
}

IDevice* RoutingCheck::findInstrumentFolder()
{
    const FUnknownPtr<IHostClasses> hostClasses(outside.hostContext.get());
    deviceList = hostInterface<IDeviceList>(hostClasses);
    IDevice* mixer = deviceList ? deviceList->findDevice(kMixerOfInstruments, 0) : nullptr;
    for (int32 index = 0; mixer && index < mixer->countChildren(); ++index) {
        IDevice* child = mixer->getChild(index);
        if (child && isOfType(*child, kInstrumentFolder))
            return child;
    }
    return nullptr;
}

} // namespace Vst
} // namespace Steinberg
