// EditorParameter: one editor parameter as the host sees it, a VST parameter.
#pragma once

#include "controller/ParameterText.h"
#include "controller/ValueTexts.h"
#include "public.sdk/source/vst/vstparameters.h"

#include "base/thread/include/flock.h"

#include <memory>

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

/** Keeps the editor's integer value, range and display texts beside the host's normalized value,
    and converts between them. The editor value has a lock of its own; range and texts never change
    after construction; the normalized and the default value are the base class's plain fields,
    which the ParameterModel guards. */
class EditorParameter : public Parameter {
public:
    /** Asks the library for range, value and texts at once. [host main thread]
        @param editor the bound library, or null: the range is then 0 to 0 without texts. It must
        outlive every updateParemeterInfo
        @param flags VST parameter flags
        @param id VST parameter ID, by which the library is asked
        @param title zero-terminated UTF-8 text, at most 127 units of UTF-16
        @param similar a parameter that probably shows the same texts, borrowed for the call, or
        null. When the library says that it does, to the last byte, both share them */
    EditorParameter(VstIEditorConnect* editor, int32 flags, ParamID id, UnitID unitId,
                    int32 stepCount, const char* title, const EditorParameter* similar = nullptr);
    ~EditorParameter() override;
    EditorParameter(const EditorParameter&) = delete;
    EditorParameter& operator=(const EditorParameter&) = delete;

    // How texts are shown and read is settled before the host sees the parameter.
    /** Whether toString gives the editor's texts; else it gives the number. */
    void setHasValueTexts(bool state) { hasValueTexts = state; }

    /** How fromString reads a text, and what is added to the number to make an editor value. */
    void setTextParser(TextParser textParser, int32 offset);

    /** The texts of the editor's values from the lowest on; null when the range has none. */
    const ValueTexts* getValueTexts() const { return valueTexts; }

    /** Takes over the library's present value, also as the value that the host goes back to.
        [host main thread; once other threads see the parameter, through ParameterModel::refresh] */
    void updateParemeterInfo();

    // Its two halves.
    /** Asks the library for its present value and stores it. @return its normalized value */
    double takeOverEditorValue();
    /** Makes a normalized value what the host sees now and what it goes back to. Calls nobody. */
    void showToHost(double normalized);

    // Conversions. [any thread]
    /** Editor value to normalized value; not clamped. 0 when the range is a single value. */
    double convertToVSTParameter(int editorValue) const;

    /** Normalized value to editor value, rounded as the editor rounds: 0.5 is added to the scaled
        span and what results, minimum included, is cut towards zero. */
    int32 convertToEditorValue(double normalized) const;

    /** At most 127 units and a terminator; empty for an editor value without a text.
        [any thread] */
    void toString(ParamValue normalized, String128 string) const override;

    /** @param string zero-terminated. @return false without a parser, for a text that it does not
        take, and for a value outside the range; normalized is set on success only. [any thread] */
    bool fromString(const TChar* string, ParamValue& normalized) const override;

    // The editor value. [any thread]
    int32 getEditorParameter() const;
    void setEditorParameter(int32 value);

    /** Stores value and says whether it differs from what was stored, in one step. */
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
    /** The text of editor value minimum + index. Null without texts. */
    IPtr<const ValueTexts> valueTexts;
};

} // namespace Vst
} // namespace Steinberg
