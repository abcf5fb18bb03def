#include "platform/TimerPlatformFactory.h"

#include "platform/Timers.h"

#include <chrono>

namespace VSTGUI {

// VSTGUI's platformfactory.cpp defines it, but no header declares it.
void setPlatformFactory(PlatformFactoryPtr&& factory);

} // namespace VSTGUI

namespace Steinberg {
namespace Vst {
namespace platform {

namespace {

struct NoGraphicsDevices : VSTGUI::IPlatformGraphicsDeviceFactory {
    VSTGUI::PlatformGraphicsDevicePtr
    getDeviceForScreen(VSTGUI::ScreenInfo::Identifier) const override
    {
        return nullptr;
    }
};

} // namespace

uint64_t TimerPlatformFactory::getTicks() const noexcept
{
    using namespace std::chrono;
    return static_cast<uint64_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

VSTGUI::PlatformFramePtr
TimerPlatformFactory::createFrame(VSTGUI::IPlatformFrameCallback*, const VSTGUI::CRect&, void*,
                                  VSTGUI::PlatformType,
                                  VSTGUI::IPlatformFrameConfig*) const noexcept
{
    return nullptr;
}

VSTGUI::PlatformFontPtr TimerPlatformFactory::createFont(const VSTGUI::UTF8String&,
                                                         const VSTGUI::CCoord&,
                                                         const int32_t&) const noexcept
{
    return nullptr;
}

bool TimerPlatformFactory::getAllFontFamilies(const VSTGUI::FontFamilyCallback&) const noexcept
{
    return false;
}

VSTGUI::PlatformBitmapPtr TimerPlatformFactory::createBitmap(const VSTGUI::CPoint&) const noexcept
{
    return nullptr;
}

VSTGUI::PlatformBitmapPtr
TimerPlatformFactory::createBitmap(const VSTGUI::CResourceDescription&) const noexcept
{
    return nullptr;
}

VSTGUI::PlatformBitmapPtr
TimerPlatformFactory::createBitmapFromPath(VSTGUI::UTF8StringPtr) const noexcept
{
    return nullptr;
}

VSTGUI::PlatformBitmapPtr TimerPlatformFactory::createBitmapFromMemory(const void*,
                                                                       uint32_t) const noexcept
{
    return nullptr;
}

VSTGUI::PNGBitmapBuffer TimerPlatformFactory::createBitmapMemoryPNGRepresentation(
    const VSTGUI::PlatformBitmapPtr&) const noexcept
{
    return {};
}

VSTGUI::PlatformResourceInputStreamPtr
TimerPlatformFactory::createResourceInputStream(const VSTGUI::CResourceDescription&) const noexcept
{
    return nullptr;
}

VSTGUI::PlatformStringPtr TimerPlatformFactory::createString(VSTGUI::UTF8StringPtr) const noexcept
{
    return nullptr;
}

bool TimerPlatformFactory::setClipboard(const DataPackagePtr&) const noexcept
{
    return false;
}

TimerPlatformFactory::DataPackagePtr TimerPlatformFactory::getClipboard() const noexcept
{
    return nullptr;
}

VSTGUI::PlatformGradientPtr TimerPlatformFactory::createGradient() const noexcept
{
    return nullptr;
}

VSTGUI::PlatformFileSelectorPtr
TimerPlatformFactory::createFileSelector(VSTGUI::PlatformFileSelectorStyle,
                                         VSTGUI::IPlatformFrame*) const noexcept
{
    return nullptr;
}

const VSTGUI::IPlatformGraphicsDeviceFactory&
TimerPlatformFactory::getGraphicsDeviceFactory() const noexcept
{
    static const NoGraphicsDevices none;
    return none;
}

void installTimers()
{
    static const bool installed = [] {
        VSTGUI::setPlatformFactory(makeTimerPlatformFactory());
        return true;
    }();
    static_cast<void>(installed);
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg
