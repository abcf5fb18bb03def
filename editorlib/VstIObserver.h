// VstIObserver: the editor library's watch on one editor parameter.
#pragma once

namespace Steinberg {
namespace Vst {

/** Made by the entry point getVSTObserverObject, owned by the controller, ended with destroy. Not
    reference counted. */
class VstIObserver {
public:
    /** How an editor parameter is addressed: part parameters carry the part index in their VST ID,
        common ones carry 16. ParamModePartVoice is used for the first part and the edit flag. */
    enum ParamModeType : int { ParamModePart = 0, ParamModeCommon = 1, ParamModePartVoice = 2 };

    /** Ends the observer; the pointer is dead afterwards. [host main thread] */
    virtual void destroy() = 0;

    virtual void reserved1() = 0;
    virtual void reserved2() = 0;
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;

    /** Lets the library raise the callbacks of a parameter that changed. Called at every timer
        tick; the callbacks may come before it returns. [host main thread] */
    virtual void checkChange() = 0;

protected:
    ~VstIObserver() = default;
};

} // namespace Vst
} // namespace Steinberg
