// Automation: the host's automation track for one parameter.
#pragma once

#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"

#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** A ramp from 0 up to 1 at the middle of the song and down to 0 at its end. The processor gets one
    point a block; the controller is told the same value, as hosts do for its display. */
class Automation {
public:
    struct Point {
        int64 sample; ///< from the song's start
        ParamValue value;
    };

    /** A picture needs no more points than this. */
    static constexpr int64 kCurvePoints = 2000;

    /** @param editController borrowed; outlives this object */
    Automation(IEditController& editController, ParamID parameter)
    : controller(editController)
    , id(parameter)
    {
    }

    /** Adds the point for the block at position. [host main thread]
        @param position, length in samples */
    void play(int64 position, int64 length, IParameterChanges& changes);

    ParamID parameter() const { return id; }
    int64 points() const { return count; }

    /** The points that were added, thinned to kCurvePoints at most and one. */
    const std::vector<Point>& curve() const { return thinned; }

    /** The ramp's value at a part of the song from 0 to 1. */
    static ParamValue valueAt(double part);

private:
    IEditController& controller;
    ParamID id;
    int64 count = 0;
    std::vector<Point> thinned;
    int64 nextOfCurve = 0;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
