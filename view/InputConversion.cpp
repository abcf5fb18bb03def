#include "view/InputConversion.h"

namespace Steinberg {
namespace Vst {

namespace {

constexpr char16 kFirstTwoByteCharacter = 0x80;
constexpr float kHalvedFrom = 2;

} // namespace

char convertChar16ToChar(char16 key)
{
    return key < kFirstTwoByteCharacter ? static_cast<char>(key) : '\0';
}

float halveScrollDistance(float distance)
{
    return distance >= kHalvedFrom || distance <= -kHalvedFrom ? distance / 2 : distance;
}

float roundWheelDistanceOutward(float distance)
{
    if (distance > 0 && distance < 1)
        return 1;
    if (distance < 0 && distance > -1)
        return -1;
    return distance;
}

} // namespace Vst
} // namespace Steinberg
