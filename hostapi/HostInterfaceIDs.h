// The IDs of all interfaces between the plug-in and the host's extension objects.
//
// A build for a shipping host replaces the IDs of the host's own interfaces with those that the
// host publishes. They are in this file and nowhere else.
#pragma once

#include "pluginterfaces/base/funknown.h"

namespace Steinberg {

/** X(interface, the four words of its ID) for every interface that a host's objects offer. */
#define VSTK2X_HOST_INTERFACES(X)                                                                  \
    X(IHostClasses, 0xB9034790, 0xDC1F4E25, 0xBC0A005C, 0x4249B56E)                                \
    X(IComponentFactory, 0x4BE2B2D4, 0xDF6A48AE, 0xBFD56DE2, 0xE62A372B)                           \
    X(IHostApplicationW, 0xD138A384, 0x5EEA4162, 0xABB5BF8B, 0xD66ECDBB)                           \
    X(IHostApplicationA, 0x3772AD5B, 0x4EF545FB, 0x9425DC13, 0x0860C2CD)                           \
    X(IPortRegistry, 0xE617B70F, 0x48664A70, 0xAE892C5E, 0x8C422587)                               \
    X(IHostPort, 0x3EE46D9C, 0x7CD04AC2, 0x962D2A59, 0x474C92FF)                                   \
    X(IComponentPortHandler, 0x5E76F6C7, 0x33A34193, 0x817123D7, 0x3E68DAB2)                       \
    X(IBusDescriptor, 0xE0E796D5, 0x0A3E4040, 0xB3737B8D, 0x6A9C1129)                              \
    X(IDeviceList, 0x72276C73, 0x804C4535, 0xBFE93206, 0xC28AB493)                                 \
    X(IDevice, 0x8ABE6DFA, 0xE5934977, 0x99560499, 0xA07A7805)                                     \
    X(IValue, 0x94FEA075, 0xCA454FC9, 0x8C4CC136, 0xDCA1A68F)                                      \
    X(IConnector, 0xCC240ACB, 0xAE814EAE, 0x8BC198E5, 0xDC697043)

#define VSTK2X_DECLARE(Interface, ...)                                                             \
    class Interface;                                                                               \
    DECLARE_CLASS_IID(Interface, __VA_ARGS__)
VSTK2X_HOST_INTERFACES(VSTK2X_DECLARE)
VSTK2X_DECLARE(IExtensionVSTServiceGetter, 0x7558EAE0, 0xB6F04AE6, 0xAA8C70A1, 0x989A5B4B)
VSTK2X_DECLARE(IExternalPlugin, 0xF02E0078, 0xF0DF4BD2, 0x9ABF53B0, 0x55261EDB)

// A host without Unicode offers its device and value objects under these IDs. Their operations are
// those of IDevice and IValue.
DECLARE_UID(IDeviceNotUnicodeID, 0xAFAFA326, 0xB47643EA, 0x9C30EBA4, 0xE3D07D4A)
DECLARE_UID(IValueNotUnicodeID, 0xC5E2097C, 0x91564CE8, 0xA62E2FB2, 0x16DAFFE6)

namespace Vst {

VSTK2X_DECLARE(IExternalEffectUsingSKI, 0x1FF368E5, 0x20AA42B7, 0x9CDA0A93, 0xEE62E09C)

} // namespace Vst
#undef VSTK2X_DECLARE

} // namespace Steinberg
