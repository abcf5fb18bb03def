// VstIObserver: the editor library's observer of one editor parameter.
#pragma once

namespace Steinberg {
namespace Vst {

/** The entry point getVSTObserverObject makes it. The controller owns it and ends it with destroy.
    Not reference counted. */
class VstIObserver {
public:
    /** How the VST ID of an editor parameter is made: from the part's index, or for a common
        parameter from 16. ParamModePartVoice is for the first part and the edit flag. */
    enum ParamModeType : int { ParamModePart = 0, ParamModeCommon = 1, ParamModePartVoice = 2 };

    /** Destroys the observer. [host main thread] */
    virtual void destroy() = 0;

    virtual void reserved1() = 0;
    virtual void reserved2() = 0;
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;

    /** Called at every timer tick. If the parameter has changed the library calls the callbacks,
        now or later. [host main thread] */
    virtual void checkChange() = 0;

protected:
    ~VstIObserver() = default;
};

} // namespace Vst
} // namespace Steinberg
