// What the tools' JSON reports have in common.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace Steinberg {
namespace Vst {
namespace tools {

/** Indented, in the order in which it was put together. Names come from files and plug-ins: bytes
    that are no UTF-8 do not end the program but become replacement characters. */
inline std::string dumped(const nlohmann::ordered_json& json)
{
    return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
