// The messages that the controller sends the processor over the host's connection points.
#pragma once

namespace Steinberg {
namespace Vst {

/** Brings the address of the editor connection: 8 raw bytes, which may be those of a
    null pointer. */
constexpr const char* kConnectMessageID = "VST_CONNECT_MESSAGE_ID";
constexpr const char* kConnectAttributeID = "VST_CONNECT_BINARY_ID";

/** Brings the integer 1 in a Unicode host, else 0. */
constexpr const char* kUnicodeHostMessageID = "VST_ISUNICODE_HOST_MESSAGE_ID";
constexpr const char* kUnicodeHostAttributeID = "VST_ISUNICODE_HOST_BINARY_ID";

/** Says that the editor connection ends. Brings its address again, which the processor does
    not read. */
constexpr const char* kDisconnectMessageID = "VST_DISCONNECT_MESSAGE_ID";
constexpr const char* kDisconnectAttributeID = "VST_DISCONNECT_BINARY_ID";

} // namespace Vst
} // namespace Steinberg
