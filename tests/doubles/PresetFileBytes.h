// The bytes of preset files, built from the definition of the format: what the plug-in writes is
// compared with them.
#pragma once

#include <cstdint>
#include <string>

namespace doubles {

/** Little-endian, low byte first. */
inline std::string le32(int32_t value)
{
    const auto bits = static_cast<uint32_t>(value);
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(bits >> shift & 0xFFU);
    return bytes;
}

inline std::string le64(int64_t value)
{
    const auto bits = static_cast<uint64_t>(value);
    return le32(static_cast<int32_t>(bits & 0xFFFFFFFFU)) + le32(static_cast<int32_t>(bits >> 32));
}

/** A file of an empty component state at byte 48, controller state, and xml unless it is empty. */
inline std::string presetFileBytes(const std::string& controllerState, const std::string& xml = {})
{
    const auto stateSize = static_cast<int64_t>(controllerState.size());
    const auto xmlSize = static_cast<int64_t>(xml.size());
    const int64_t listOffset = 48 + stateSize + xmlSize;
    std::string bytes = "VST3" + le32(1) + "13EEE3484D664261B90352CE35DD18B4" + le64(listOffset);
    bytes += controllerState + xml;
    bytes += "List" + le32(xml.empty() ? 2 : 3);
    bytes += "Comp" + le64(48) + le64(0);
    bytes += "Cont" + le64(48) + le64(stateSize);
    if (!xml.empty())
        bytes += "Info" + le64(48 + stateSize) + le64(xmlSize);
    return bytes;
}

} // namespace doubles
