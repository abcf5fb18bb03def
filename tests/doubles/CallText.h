// CallText: how the doubles write a call into the Trace.
//
//   callText("host", "performEdit", 37012000u, 0.5)  gives  "host.performEdit(37012000, 0.5)"
//   callText("library", "setEffectInterface", pointer)      "library.setEffectInterface(object)"
//   bytesText(data, 3)                                      "90 3C 7F"
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

namespace doubles {

/** One argument: a number in its shortest exact form, true or false, a text as it stands, any other
    pointer as "null" or "object" (addresses differ from run to run). */
std::string numberText(double value);
inline std::string argumentText(const char* value)
{
    return value ? value : "null";
}
inline std::string argumentText(const std::string& value)
{
    return value;
}
template <typename T>
std::string argumentText(const T& value)
{
    if constexpr (std::is_same_v<T, bool>)
        return value ? "true" : "false";
    else if constexpr (std::is_floating_point_v<T>)
        return numberText(static_cast<double>(value));
    else if constexpr (std::is_pointer_v<T> || std::is_null_pointer_v<T>)
        return value ? "object" : "null";
    else
        return std::to_string(value);
}

/** Bytes in hexadecimal with blanks between; null is "null". */
std::string bytesText(const void* data, size_t size);

template <typename... Arguments>
std::string callText(const std::string& object, const char* operation,
                     const Arguments&... arguments)
{
    std::string result = object + "." + operation + "(";
    size_t left = sizeof...(arguments);
    ((result += argumentText(arguments), result += --left > 0 ? ", " : ""), ...);
    return result + ")";
}

} // namespace doubles
