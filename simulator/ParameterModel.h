// ParameterModel: the simulated instrument's parameters and their present values.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <array>
#include <atomic>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** The shape of a parameter's value text. */
enum class ValueText {
    Plain,    ///< "0" to "127"
    Signed64, ///< "-64", "+0" to "+63"
    Pan,      ///< "L64", "C" to "R63"
    Function  ///< the name of an assignable function
};

/** Sixteen parts of fourteen parameters and the edit flag. The set is fixed; values may be read and
    written by any thread, the audio thread included: nothing here waits, and only valueText
    allocates. */
class ParameterModel {
public:
    static constexpr int32 parts = 16;
    static constexpr size_t partParameters = 14;
    static constexpr size_t size = parts * partParameters + 1;
    static constexpr size_t none = size; ///< what find gives for an unknown ID
    static constexpr uint32 editFlag = 201005000;

    ParameterModel();

    /** Index of a parameter; indices follow ascending IDs. */
    size_t find(uint32 id) const;
    uint32 id(size_t index) const { return rows[index].id; }
    /** Index of a part's parameter, in the order of the editor's columns (0 to 13). */
    size_t findInPart(int32 part, size_t column) const;
    /** The other way; partParameters is the column of what is no part's. */
    int32 part(size_t index) const { return static_cast<int32>(rows[index].id % 1000); }
    size_t column(size_t index) const { return rows[index].column; }

    int32 minimum(size_t) const { return 0; }
    int32 maximum(size_t index) const { return id(index) == editFlag ? 1 : 127; }
    /** 0 for a continuous parameter. */
    int32 stepCount(size_t index) const;
    int32 clamped(size_t index, int32 value) const;

    int32 value(size_t index) const { return rows[index].value.load(); }
    /** Stores the value, clamped. */
    void setValue(size_t index, int32 value);
    /** Stores the value, clamped, only if the present one is still expected. */
    void replaceValue(size_t index, int32 expected, int32 value);

    /** What the editor shows for a value. @return false and an empty text outside the range */
    bool valueText(size_t index, int32 value, std::string& text) const;

    /** The editor value of a host's normalized value; outside 0 to 1, or no number: clamped. */
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
