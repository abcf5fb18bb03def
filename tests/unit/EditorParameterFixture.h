// EditorParameterFixture: an EditorParameter for a parameter of the scripted library.
#pragma once

#include "controller/EditorParameter.h"
#include "tests/doubles/ScriptedLibrary.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <string>

namespace doubles {

constexpr Steinberg::Vst::ParamID kID = 5;
constexpr Steinberg::int32 kLargest = std::numeric_limits<Steinberg::int32>::max();
constexpr Steinberg::int32 kSmallest = std::numeric_limits<Steinberg::int32>::min();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/** Counts the calls for a text and does not record them, for ranges of a million values. */
class CountingLibrary : public ScriptedLibrary {
public:
    using ScriptedLibrary::ScriptedLibrary;
    Steinberg::int32 getParameterValueString(Steinberg::uint32, Steinberg::int32 value,
                                             std::string& text) override
    {
        ++asked;
        text = std::to_string(value);
        return 0;
    }
    size_t asked = 0;
};

class EditorParameterFixture : public testing::Test {
protected:
    using EditorParameter = Steinberg::Vst::EditorParameter;

    Steinberg::IPtr<EditorParameter> make(const ScriptedParameter& described)
    {
        library.setParameter(kID, described);
        auto made = Steinberg::owned(new EditorParameter(
            &library, Steinberg::Vst::ParameterInfo::kCanAutomate, kID, 2, 3, "Volume 1"));
        made->setHasValueTexts(true);
        return made;
    }
    Steinberg::IPtr<EditorParameter> ranged(Steinberg::int32 minimum, Steinberg::int32 maximum)
    {
        return make({minimum, minimum, maximum, 0, {}});
    }

    static std::u16string textOf(const EditorParameter& parameter, double normalized)
    {
        Steinberg::char16 text[129];
        std::fill_n(text, 129, u'#');
        parameter.toString(normalized, text);
        EXPECT_EQ(text[128], u'#') << "written behind the buffer";
        const auto length = static_cast<size_t>(std::find(text, text + 128, u'\0') - text);
        EXPECT_LT(length, 128u) << "no terminator";
        return {text, length};
    }

    Trace trace;
    ScriptedLibrary library{trace};
};

} // namespace doubles
