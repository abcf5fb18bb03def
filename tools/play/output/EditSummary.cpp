#include "tools/play/output/EditSummary.h"

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

using Kind = ComponentHandler::Kind;

int64& counter(EditSummary& summary, Kind kind)
{
    if (kind == Kind::begin)
        return summary.begins;
    return kind == Kind::perform ? summary.performs : summary.ends;
}

/** Whether next may follow last; before the first edit stands an end. */
bool mayFollow(Kind last, Kind next)
{
    if (next == Kind::begin)
        return last == Kind::end;
    if (next == Kind::end)
        return last == Kind::perform;
    return last != Kind::end;
}

} // namespace

EditSummary summarizeEdits(const std::vector<ComponentHandler::Edit>& edits, ParamID id)
{
    EditSummary summary;
    auto last = Kind::end;
    for (const auto& edit : edits) {
        if (edit.id != id)
            continue;
        ++counter(summary, edit.kind);
        summary.inOrder = summary.inOrder && mayFollow(last, edit.kind);
        last = edit.kind;
    }
    summary.inOrder = summary.inOrder && last == Kind::end;
    return summary;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
