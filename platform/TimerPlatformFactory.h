// TimerPlatformFactory: a VSTGUI platform factory that makes timers and nothing else.
#pragma once

#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/platform/iplatformfont.h"
#include "vstgui/lib/platform/iplatformframe.h"
#include "vstgui/lib/platform/iplatformgradient.h"
#include "vstgui/lib/platform/iplatformgraphicsdevice.h"
#include "vstgui/lib/platform/iplatformresourceinputstream.h"
#include "vstgui/lib/platform/iplatformstring.h"
#include "vstgui/lib/platform/iplatformtimer.h"
#include "vstgui/lib/platform/platformfactory.h"

#include "vstgui/lib/idatapackage.h"

namespace Steinberg {
namespace Vst {
namespace platform {

/** Gives null, or failure, for everything that has to do with drawing, fonts, file dialogs and the
    clipboard. Each platform's factory derives from it and makes its own timers. */
class TimerPlatformFactory : public VSTGUI::IPlatformFactory {
public:
    uint64_t getTicks() const noexcept override;
    VSTGUI::PlatformFramePtr createFrame(VSTGUI::IPlatformFrameCallback*, const VSTGUI::CRect&,
                                         void*, VSTGUI::PlatformType,
                                         VSTGUI::IPlatformFrameConfig*) const noexcept override;
    VSTGUI::PlatformFontPtr createFont(const VSTGUI::UTF8String&, const VSTGUI::CCoord&,
                                       const int32_t&) const noexcept override;
    bool getAllFontFamilies(const VSTGUI::FontFamilyCallback&) const noexcept override;
    VSTGUI::PlatformBitmapPtr createBitmap(const VSTGUI::CPoint&) const noexcept override;
    VSTGUI::PlatformBitmapPtr
    createBitmap(const VSTGUI::CResourceDescription&) const noexcept override;
    VSTGUI::PlatformBitmapPtr createBitmapFromPath(VSTGUI::UTF8StringPtr) const noexcept override;
    VSTGUI::PlatformBitmapPtr createBitmapFromMemory(const void*, uint32_t) const noexcept override;
    VSTGUI::PNGBitmapBuffer
    createBitmapMemoryPNGRepresentation(const VSTGUI::PlatformBitmapPtr&) const noexcept override;
    VSTGUI::PlatformResourceInputStreamPtr
    createResourceInputStream(const VSTGUI::CResourceDescription&) const noexcept override;
    VSTGUI::PlatformStringPtr createString(VSTGUI::UTF8StringPtr) const noexcept override;
    bool setClipboard(const DataPackagePtr&) const noexcept override;
    DataPackagePtr getClipboard() const noexcept override;
    VSTGUI::PlatformGradientPtr createGradient() const noexcept override;
    VSTGUI::PlatformFileSelectorPtr
    createFileSelector(VSTGUI::PlatformFileSelectorStyle,
                       VSTGUI::IPlatformFrame*) const noexcept override;
    const VSTGUI::IPlatformGraphicsDeviceFactory&
    getGraphicsDeviceFactory() const noexcept override;
    const VSTGUI::LinuxFactory* asLinuxFactory() const noexcept override { return nullptr; }
    const VSTGUI::MacFactory* asMacFactory() const noexcept override { return nullptr; }
    const VSTGUI::Win32Factory* asWin32Factory() const noexcept override { return nullptr; }
};

/** Makes the platform's factory. Each platform folder defines it. */
VSTGUI::PlatformFactoryPtr makeTimerPlatformFactory();

} // namespace platform
} // namespace Vst
} // namespace Steinberg
