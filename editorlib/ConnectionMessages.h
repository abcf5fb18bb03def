// The messages that the controller sends the processor over the host's connection points.
#pragma once

namespace Steinberg {
namespace Vst {

/** Carries the editor connection's address, 8 raw bytes, possibly of a null pointer. */
constexpr const char* kConnectMessageID = "VST_CONNECT_MESSAGE_ID";
constexpr const char* kConnectAttributeID = "VST_CONNECT_BINARY_ID";

/** Carries the integer 1 in a Unicode host, else 0. */
constexpr const char* kUnicodeHostMessageID = "VST_ISUNICODE_HOST_MESSAGE_ID";
constexpr const char* kUnicodeHostAttributeID = "VST_ISUNICODE_HOST_BINARY_ID";

/** Carries the address again, which the processor does not read. */
constexpr const char* kDisconnectMessageID = "VST_DISCONNECT_MESSAGE_ID";
constexpr const char* kDisconnectAttributeID = "VST_DISCONNECT_BINARY_ID";

} // namespace Vst
} // namespace Steinberg
