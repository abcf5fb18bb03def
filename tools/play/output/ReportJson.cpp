#include "tools/common/Json.h"
#include "tools/play/output/Report.h"
#include "tools/play/output/StudioJson.h"

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

using Json = nlohmann::ordered_json;

Json busesOf(const Report& report)
{
    auto list = Json::array();
    for (const auto& bus : report.buses)
        list.push_back({{"name", bus.name},
                        {"type", bus.isAudio ? "audio" : "event"},
                        {"direction", bus.isOutput ? "output" : "input"},
                        {"channels", bus.channels}});
    return list;
}

Json countsOf(const NoteCounts& counts)
{
    return {{"noteOns", counts.ons}, {"noteOffs", counts.offs}};
}

Json notesOf(const Report& report)
{
    const auto& played = report.played;
    const auto sent = played.sent.allOns() + played.sent.allOffs();
    const auto left = report.port ? static_cast<int64>(report.port->notesLeft)
                                  : played.left.allOns() + played.left.allOffs();
    Json notes{{"sent", countsOf(played.sent)},
               {"midiOut", countsOf(played.left)},
               {"otherMidiOut", played.otherOutgoing},
               {"lost", sent - left},
               {"crowdedBlocks", played.crowdedBlocks}};
    if (!report.port) {
        notes["lostNoteOns"] = report.fates.lostStarts();
        notes["lostNoteOffs"] = report.fates.lostEnds();
        notes["notSent"] = report.fates.extra.size();
    }
    if (report.library)
        notes["editor"] = countsOf(report.library->received);
    return notes;
}

Json turnsOf(const Report& report)
{
    auto list = Json::array();
    for (const auto& turn : report.turned)
        list.push_back({{"title", turn.title},
                        {"gestures", turn.gestures},
                        {"begin", turn.begins},
                        {"perform", turn.performs},
                        {"end", turn.ends},
                        {"inOrder", turn.inOrder}});
    return list;
}

Json automationOf(const Report& report)
{
    auto list = Json::array();
    for (const auto& parameter : report.automated)
        list.push_back({{"title", parameter.title}, {"points", parameter.points}});
    return list;
}

Json storedOf(const Report& report)
{
    auto list = Json::array();
    for (const auto& bank : report.stored)
        list.push_back({{"bank", bank.bank}, {"number", bank.number}, {"file", bank.file}});
    return list;
}

std::string hexOf(const std::vector<char>& data)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (const char byte : data) {
        text += digits[static_cast<unsigned char>(byte) >> 4U];
        text += digits[static_cast<unsigned char>(byte) & 0xFU];
    }
    return text;
}

void addPortAndFiles(Json& json, const Report& report)
{
    if (report.preset)
        json["preset"] = {{"file", report.preset->file},
                          {"reached", report.preset->reached},
                          {"data", hexOf(report.preset->data)}};
    if (!report.stored.empty())
        json["storedBanks"] = storedOf(report);
    if (report.port)
        json["port"] = {{"name", report.port->name},
                        {"reason", report.port->reason},
                        {"left", report.port->left},
                        {"notesLeft", report.port->notesLeft},
                        {"lost", report.port->lost},
                        {"arrived", report.port->arrived},
                        {"copiedProgramChanges", report.copiedProgramChanges}};
    if (!report.midiFile.empty())
        json["midiFile"] = report.midiFile;
    if (!report.pageFile.empty())
        json["page"] = report.pageFile;
    if (!report.audioFile.empty())
        json["audio"] = {{"file", report.audioFile},
                         {"seconds", report.audio.seconds},
                         {"peak", report.audio.peak},
                         {"rms", report.audio.rms},
                         {"copiedProgramChanges", report.copiedProgramChanges}};
}

} // namespace

std::string jsonOf(const Report& report)
{
    Json json{
        {"plugIn", report.plugIn},
        {"vendor", report.vendor},
        {"host", report.host},
        {"hostType", report.library ? Json(report.library->hostType) : Json()},
        {"binding", report.binding},
        {"buses", busesOf(report)},
        {"sampleRate", report.settings.sampleRate},
        {"blockSize", report.settings.blockSize},
        {"latency", report.latency},
        {"song", report.song},
        {"samples", report.played.samples},
        {"notes", notesOf(report)},
        {"state", {{"bytes", report.stateSize}, {"cameBack", report.stateCameBack}}},
        {"process",
         {{"blocks", report.played.blocks},
          {"longestSeconds", report.played.process.longest()},
          {"allSeconds", report.played.process.sum()},
          {"medianSeconds", report.played.process.within(0.5)},
          {"within99PercentSeconds", report.played.process.within(0.99)},
          {"within999PermilleSeconds", report.played.process.within(0.999)},
          {"blocksTooLate", report.played.lateBlocks}}},
        {"queue",
         {{"longest", report.played.timeline.longestQueue()}, {"limit", Player::kPlugInQueue}}},
        {"timerTicks", report.timerTicks},
        {"automation", automationOf(report)},
        {"userTurns", turnsOf(report)}};
    addPortAndFiles(json, report);
    addTo(json, report.studio);
    return tools::dumped(json);
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
