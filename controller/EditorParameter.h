// EditorParameter: the VST parameter that stands for one editor parameter.
#pragma once

#include "controller/ParameterText.h"
#include "controller/ValueTexts.h"
#include "public.sdk/source/vst/vstparameters.h"

#include "base/thread/include/flock.h"

#include <memory>

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

/** Holds the editor's integer value, range and display texts beside the host's normalized value,
    and converts between them. The editor value has its own lock. Range and texts never change after
    construction. The normalized value and the default value are fields of the base class, which has
    no lock: ParameterModel guards them. */
class EditorParameter : public Parameter {
public:
    /** Asks the library for the range, the value and all texts. [host main thread]
        @param editor the bound library, or null: the range is then 0 to 0, without texts. It must
        live as long as updateParemeterInfo is called
        @param flags VST parameter flags
        @param id VST parameter ID, by which the library is asked
        @param title zero-terminated UTF-8; at most 127 units of UTF-16 are shown
        @param similar a parameter that probably shows the same texts, borrowed for the call, or
        null. If its texts are the same, byte by byte, both parameters share them in memory */
    EditorParameter(VstIEditorConnect* editor, int32 flags, ParamID id, UnitID unitId,
                    int32 stepCount, const char* title, const EditorParameter* similar = nullptr);
    ~EditorParameter() override;
    EditorParameter(const EditorParameter&) = delete;
    EditorParameter& operator=(const EditorParameter&) = delete;

    // To be called before the host sees the parameter.
    /** Whether toString gives the editor's texts; if not, it gives the normalized value. */
    void setHasValueTexts(bool state) { hasValueTexts = state; }

    /** How fromString reads a text; offset is added to the parsed number to get the
        editor value. */
    void setTextParser(TextParser textParser, int32 offset);

    /** The texts of the editor's values from the lowest on; null when the range has none. */
    const ValueTexts* getValueTexts() const { return valueTexts; }

    /** Asks the library for the current value and sets the editor value, the normalized value and
        the default value to it. [host main thread; once other threads can see the parameter, call
        ParameterModel::refresh instead] */
    void updateParemeterInfo();

    // The two steps of updateParemeterInfo.
    /** Asks the library for the current value and stores it as the editor value.
        @return it as a normalized value */
    double takeOverEditorValue();
    /** Sets the normalized value and the default value. Calls neither host nor library. */
    void showToHost(double normalized);

    // Conversions. [any thread]
    /** Converts an editor value to a normalized value, without clamping. 0 when the range has one
        value only. */
    double convertToVSTParameter(int editorValue) const;

    /** Converts a normalized value to an editor value, rounded as the editor rounds:
        minimum + span * normalized + 0.5, truncated towards zero. */
    int32 convertToEditorValue(double normalized) const;

    /** Sets string to at most 127 units and a terminator; empty for an editor value that has no
        text. [any thread] */
    void toString(ParamValue normalized, String128 string) const override;

    /** Reads a text. @param string zero-terminated @param[out] normalized set on success only
        @return false without a parser, for a text that the parser refuses, and for a value outside
        the range [any thread] */
    bool fromString(const TChar* string, ParamValue& normalized) const override;

    // The editor value, under "ParameterFlag". [any thread]
    int32 getEditorParameter() const;
    void setEditorParameter(int32 value);

    /** Stores value. @return whether it differs from the former value, tested under the
        same lock */
    bool changeEditorParameter(int32 value);

    OBJ_METHODS(EditorParameter, Parameter) // untaken: sdk-macro

private:
    int32 askValue() const;
    void fetchValueTexts(const EditorParameter* similar);

    int32 editorValue = 0; ///< guarded by lock
    VstIEditorConnect* editor;
    bool hasValueTexts = false;
    TextParser parser = nullptr;
    int32 parseOffset = 0;
    int32 maximum = 0;
    int32 minimum = 0;
    std::unique_ptr<Base::Thread::FLock> lock;
    /** Text number n is that of the editor value minimum + n. Null without texts. */
    IPtr<const ValueTexts> valueTexts;
};

} // namespace Vst
} // namespace Steinberg
