#include "tools/play/page/Page.h"

#include "tools/common/Failure.h"
#include "tools/play/page/Packed.h"

#include <cmath>
#include <fstream>
#include <nlohmann/json.hpp>

namespace Steinberg {
namespace Vst {
namespace play {

/** The page with @DATA@ in the data's place; the build makes it of the files beside this one. */
extern const char* const kPageTemplate;

namespace {

using Json = nlohmann::ordered_json;

constexpr double kNanosecondsPerSecond = 1e9;
constexpr double kCurveSteps = 10000;

int64 nanoseconds(double seconds)
{
    return std::llround(seconds * kNanosecondsPerSecond);
}

// data.js reads what these write.

int64 traitsOf(const NoteFate& note)
{
    return (note.begins ? 1 : 0) + (note.ends ? 2 : 0) +
           (note.startBack != NoteFate::kNever ? 4 : 0) +
           (note.endBack != NoteFate::kNever ? 8 : 0);
}

std::string packed(const std::vector<NoteFate>& notes)
{
    Packed numbers;
    int64 last = 0;
    for (const auto& note : notes) {
        numbers.add(note.start - last);
        last = note.start;
        numbers.add(note.end - note.start);
        numbers.add(note.channel * 128 + note.pitch);
        numbers.add(int64{note.velocity} * 16 + traitsOf(note));
        if (note.startBack != NoteFate::kNever)
            numbers.addSigned(note.startBack - note.start);
        if (note.endBack != NoteFate::kNever)
            numbers.addSigned(note.endBack - note.end);
    }
    return numbers.text();
}

std::string packed(const std::vector<OutgoingNote>& notes)
{
    Packed numbers;
    for (const auto& note : notes) {
        numbers.add(note.sample);
        numbers.add(note.channel * 128 + note.pitch);
        numbers.add(note.velocity);
    }
    return numbers.text();
}

std::string packed(const std::vector<Timeline::Span>& spans)
{
    Packed numbers;
    for (const auto& span : spans) {
        numbers.add(span.blocks);
        numbers.add(nanoseconds(span.seconds));
        numbers.add(nanoseconds(span.longest));
        numbers.add(span.sent);
        numbers.add(span.left);
        numbers.add(span.mostSent);
        numbers.add(span.mostLeft);
    }
    return numbers.text();
}

std::string packed(const std::vector<Automation::Point>& points)
{
    Packed numbers;
    for (const auto& point : points) {
        numbers.add(point.sample);
        numbers.add(std::llround(point.value * kCurveSteps));
    }
    return numbers.text();
}

std::string packed(const BlockTimes& times)
{
    Packed numbers;
    for (const auto count : times.steps())
        numbers.add(count);
    return numbers.text();
}

Json listOf(const std::vector<Fact>& facts)
{
    auto list = Json::array();
    for (const auto& fact : facts)
        list.push_back({fact.subject, fact.text});
    return list;
}

Json curvesOf(const Report& report)
{
    auto list = Json::array();
    for (const auto& parameter : report.automated)
        list.push_back({{"title", parameter.title}, {"points", packed(parameter.curve)}});
    return list;
}

Json dataOf(const Report& report)
{
    return {{"report", Json::parse(jsonOf(report))},
            {"session", listOf(sessionFacts(report))},
            {"results", listOf(resultFacts(report))},
            {"notes", packed(report.fates.notes)},
            {"extra", packed(report.fates.extra)},
            {"blocksInASpan", report.played.timeline.blocksInASpan()},
            {"spans", packed(report.played.timeline.spans())},
            {"times", packed(report.played.process)},
            {"curves", curvesOf(report)}};
}

/** JSON for a script element, which no name in it can end: each < is written as an escape. */
std::string insideScript(const Json& json)
{
    std::string text;
    for (const char character : json.dump(-1, ' ', false, Json::error_handler_t::replace))
        if (character == '<')
            text += "\\u003c";
        else
            text += character;
    return text;
}

} // namespace

std::string pageOf(const Report& report)
{
    constexpr const char* place = "@DATA@";
    std::string page = kPageTemplate;
    return page.replace(page.find(place), std::string(place).size(), insideScript(dataOf(report)));
}

void writePage(const Report& report)
{
    std::ofstream file(report.pageFile, std::ios::binary | std::ios::trunc);
    file << pageOf(report);
    if (!file.flush())
        throw tools::Failure("The page \"" + report.pageFile + "\" cannot be written.");
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
