#include "controller/ParameterTable.h"

#include <cstdio>
#include <cstdlib>

namespace Steinberg {
namespace Vst {

namespace {

constexpr int kCommonPart = 16;

} // namespace

unsigned vstParameterID(int block, int number, int part, VstIObserver::ParamModeType mode)
{
    const int last = mode == VstIObserver::ParamModeCommon ? kCommonPart : part;
    char text[40]; // three integers of at most eleven characters each
    std::snprintf(text, sizeof(text), "%d%03d%03d", block, number, last);
    return static_cast<unsigned>(std::strtoll(text, nullptr, 10));
}

} // namespace Vst
} // namespace Steinberg
