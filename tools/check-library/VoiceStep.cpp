// The step that asks for voices, categories and user banks, as the preset library's generator does.
#include "basics/CallGuard.h"
#include "tools/check-library/Life.h"
#include "tools/check-library/Steps.h"
#include "tools/check-library/Tally.h"
#include "tools/check-library/TextRules.h"
#include "tools/common/VoiceWalk.h"

#include <map>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

using tools::Voice;

bool isUserBank(VoiceBank::Bank bank)
{
    return (VstK2xPresetCreater::bankToPresetType(bank) & VstK2xPresetCreater::kAllUserBanks) != 0;
}

class VoiceCheck {
public:
    VoiceCheck(Journal& newJournal, bool isStrict, WatchedLibrary& newLibrary)
    : journal(newJournal)
    , strict(isStrict)
    , library(newLibrary)
    , creater(newLibrary)
    {
    }

    void run()
    {
        const auto voices = tools::collectVoices(creater, tools::allBanks(), [] { return false; });
        for (const auto& voice : voices)
            look(voice);
        tellVoices();
        tellUserBanks();
        tellFaults();
    }

private:
    void look(const Voice& voice)
    {
        ++(isUserBank(voice.bank) ? userBanks : banks)[voice.bank];
        std::string fileName, voiceName, category, subCategory;
        if (creater.separationVoiceData(voice.text, fileName, voiceName, category, subCategory) !=
            0)
            uncategorised.add(voice.label());
        for (const auto& text : {voice.text, category, subCategory}) {
            const auto fault = faultOf(text);
            if (!fault.empty())
                badTexts.add(fault + ": " + voice.label());
        }
        if (isUserBank(voice.bank))
            lookAtBank(voice);
    }

    void lookAtBank(const Voice& voice)
    {
        const auto data = dataOf(voice);
        bankBytes += data.size();
        if (data.empty())
            return hollow.add(voice.label());
        if (!strict)
            return;
        guarded([&] {
            library.applyUserBank(voice.bank, voice.number, data.data(),
                                  static_cast<int32>(data.size()));
        });
        if (dataOf(voice) != data)
            changed.add(voice.label());
    }

    std::vector<char> dataOf(const Voice& voice)
    {
        return guarded(std::vector<char>(),
                       [&] { return library.getUserBankData(voice.bank, voice.number); });
    }

    void tellVoices()
    {
        size_t all = 0;
        std::string list;
        for (const auto& [bank, count] : banks) {
            all += count;
            list += (list.empty() ? "" : ", ") + std::to_string(count) + " in bank " +
                    std::to_string(bank);
        }
        if (all == 0)
            return journal.say(remark("voices",
                                      "It lists no voices: make-presets would write no files.",
                                      {{"voices", 0}}));
        journal.say(good("voices", "It lists " + std::to_string(all) + " voices: " + list + ".",
                         {{"voices", all}, {"banks", factsOf(banks)}}));
    }

    void tellUserBanks()
    {
        size_t all = 0;
        for (const auto& bank : userBanks)
            all += bank.second;
        if (all == 0)
            return journal.say(
                remark("user-banks", "It has no user banks to store.", {{"userBanks", 0}}));
        journal.say(
            good("user-banks",
                 "It has " + std::to_string(all) + " user banks, " + std::to_string(bankBytes) +
                     " bytes in all.",
                 {{"userBanks", all}, {"banks", factsOf(userBanks)}, {"bytes", bankBytes}}));
    }

    /** Counts by bank, for programs. */
    static nlohmann::ordered_json factsOf(const std::map<int, size_t>& counts)
    {
        nlohmann::ordered_json facts;
        for (const auto& [bank, count] : counts)
            facts[std::to_string(bank)] = count;
        return facts;
    }

    void tellFaults()
    {
        const auto serious = strict ? Verdict::bad : Verdict::remark;
        sayIf(journal, uncategorised, serious, "categories", "It does not know the category of ",
              ": no preset file can be written of it.");
        sayIf(journal, hollow, serious, "user-banks",
              "It lists a user bank without data: ", ". Storing it writes an empty file.");
        if (!strict)
            return;
        sayIf(journal, badTexts, Verdict::bad, "texts", "A voice's text ", ".");
        sayIf(journal, changed, Verdict::bad, "user-banks",
              "A user bank does not give back the bytes that were applied to it: ", ".");
    }

    Journal& journal;
    const bool strict;
    WatchedLibrary& library;
    VstK2xPresetCreater creater;
    std::map<int, size_t> banks, userBanks;
    size_t bankBytes = 0;
    Tally uncategorised, badTexts, hollow, changed;
};

} // namespace

void askVoices(const Options& options, Journal& journal)
{
    Life life(options.library, journal);
    VoiceCheck(journal, options.strict, life.library()).run();
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
