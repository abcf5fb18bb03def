// EditorOwner: what the editor view asks of the controller that made it.
#pragma once

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

/** Implemented by VstK2xController. Neither operation throws. */
class EditorOwner {
public:
    /** The bound editor library, borrowed; null before initialize and after terminate.
        [any thread] */
    virtual VstIEditorConnect* getEditorConnection() const = 0;

    /** The kind of host, as support/HostKind.h numbers them. [any thread] */
    virtual int getVSTHostType() const = 0;

protected:
    ~EditorOwner() = default;
};

} // namespace Vst
} // namespace Steinberg
