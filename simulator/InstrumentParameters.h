// InstrumentParameters: the simulated instrument's parameters and their current values.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <array>
#include <atomic>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** How a parameter's value is shown. */
enum class ValueText {
    Plain,    ///< "0" to "127"
    Signed64, ///< "-64", "+0" to "+63"
    Pan,      ///< "L64", "C" to "R63"
    Function  ///< the name of an assignable function
};

/** Sixteen parts with fourteen parameters each, and the edit flag. Nothing waits, and only
    valueText allocates. [any thread, also the audio thread] */
class InstrumentParameters {
public:
    static constexpr int32 parts = 16;
    static constexpr size_t partParameters = 14;
    static constexpr size_t size = parts * partParameters + 1;
    static constexpr size_t none = size; ///< the result of find for an unknown ID
    static constexpr uint32 editFlag = 201005000;
    static constexpr int32 noController = -1;

    InstrumentParameters();

    /** Index of a parameter. The parameters are in ascending order of their IDs. */
    size_t find(uint32 id) const;
    uint32 id(size_t index) const { return rows[index].id; }
    /** Index of a part's parameter, in the order of the editor's columns (0 to 13). */
    size_t findInPart(int32 part, size_t column) const;
    /** The part and the column of a parameter. The column is partParameters for one that belongs to
        no part. */
    int32 part(size_t index) const { return static_cast<int32>(rows[index].id % 1000); }
    size_t column(size_t index) const { return rows[index].column; }

    /** The MIDI controller of the parameters in a column, or noController. */
    static int32 controllerOf(size_t column);

    int32 minimum(size_t) const { return 0; }
    int32 maximum(size_t index) const { return id(index) == editFlag ? 1 : 127; }
    /** 0 for a continuous parameter. */
    int32 stepCount(size_t index) const;
    int32 clamped(size_t index, int32 value) const;

    int32 value(size_t index) const { return rows[index].value.load(); }
    /** Stores the value, clamped. */
    void setValue(size_t index, int32 value);
    /** Stores the value, clamped, if the current value is still the expected one. */
    void replaceValue(size_t index, int32 expected, int32 value);

    /** Sets text to what the editor shows for a value. @return false, with an empty text, for a
        value outside the range */
    bool valueText(size_t index, int32 value, std::string& text) const;

    /** The editor value for a normalized value, which is clamped to 0 to 1; for NaN the minimum. */
    int32 fromNormalized(size_t index, double normalized) const;

private:
    struct Row {
        uint32 id = 0;
        size_t column = partParameters;
        ValueText text = ValueText::Plain;
        bool stepped = false;
        std::atomic<int32> value{0};
    };
    std::array<Row, size> rows;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
