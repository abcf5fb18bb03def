// ParameterList: the parameters and units that a controller shows its host.
#pragma once

#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

class ParameterList {
public:
    struct Parameter {
        ParamID id;
        std::string title;
        UnitID unit;
        int32 flags;
        int32 steps;
        ParamValue normalizedDefault;
        std::string text; ///< of the present value

        bool canAutomate() const { return (flags & ParameterInfo::kCanAutomate) != 0; }
    };
    struct Unit {
        UnitID id;
        std::string name;
        UnitID parent;
        int32 programList;
    };

    /** Reads everything from a controller that has been initialized. [host main thread] */
    explicit ParameterList(IEditController& controller);

    const std::vector<Parameter>& parameters() const { return allParameters; }
    const std::vector<Unit>& units() const { return allUnits; }

    /** The first parameter with this title.
        @throws Failure when there is none */
    const Parameter& find(const std::string& title) const;

    /** The title of an ID, or the ID as a number for a parameter that is not listed. */
    std::string titleOf(ParamID id) const;

    /** Two tables for people: the parameters, then the units. */
    void print(std::ostream& stream) const;

private:
    void readParameters(IEditController& controller);
    void readUnits(IEditController& controller);

    std::vector<Parameter> allParameters;
    std::vector<Unit> allUnits;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
