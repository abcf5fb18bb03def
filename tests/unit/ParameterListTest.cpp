#include "tests/unit/BoundController.h"

#include <algorithm>
#include <set>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

enum class Reads { kNumber, kPan, kNothing };

/** A parameter of each part, as the host must find it. The ID of each further part is one more. */
struct ParameterRow {
    const char* titleFront;
    bool hasNumber;
    const char* titleBack;
    unsigned firstID;
    int block;
    int number;
    Reads reads;
    int offset;
    bool asksForStepCount;
};

const ParameterRow kParameterRows[] = {
    {"Volume ", true, "", 37012000, 37, 12, Reads::kNumber, 0, false},
    {"Pan ", true, "", 37013000, 37, 13, Reads::kPan, 64, false},
    {"Cutoff ", true, "", 37053000, 37, 53, Reads::kNumber, 64, false},
    {"Resonance ", true, "", 37054000, 37, 54, Reads::kNumber, 64, false},
    {"AEG Attack Time ", true, "", 37044000, 37, 44, Reads::kNumber, 64, false},
    {"AEG Decay Time ", true, "", 37045000, 37, 45, Reads::kNumber, 64, false},
    {"AEG Sustain Level ", true, "", 37046000, 37, 46, Reads::kNumber, 64, false},
    {"AEG Release Time ", true, "", 37047000, 37, 47, Reads::kNumber, 64, false},
    {"Chorus Send ", true, "", 37016000, 37, 16, Reads::kNumber, 0, false},
    {"Reverb Send ", true, "", 37015000, 37, 15, Reads::kNumber, 0, false},
    {"Assignable Function ", true, "-1", 19001000, 19, 1, Reads::kNothing, 0, true},
    {"Assignable Function ", true, "-2", 19002000, 19, 2, Reads::kNothing, 0, true},
    {"Assignable Knob 1", false, "", 37056000, 37, 56, Reads::kNumber, 64, false},
    {"Assignable Knob 2", false, "", 37057000, 37, 57, Reads::kNumber, 64, false},
};
static_assert(std::size(kParameterRows) == kParametersOfAPart);

/** Differs from parameter to parameter, so that a wrong ID is seen. */
int32 valueOf(unsigned id)
{
    return static_cast<int32>(id % 113);
}

/** All parameters range from 0 to 128, where normalized values are exact. */
class ParameterListTest : public testing::Test {
protected:
    ParameterListTest()
    {
        for (const ParameterRow& row : kParameterRows)
            for (unsigned part = 0; part < kParts; ++part)
                describe(row.firstID + part);
        describe(kEditFlag);
        bound.library.valueText = [](unsigned id, int value) {
            return std::to_string(id) + "=" + std::to_string(value);
        };
    }

    void describe(unsigned id) { bound.library.setParameter(id, {valueOf(id), 0, 128, 9, {}}); }

    ParameterInfo infoAt(int32 index)
    {
        ParameterInfo info = {};
        EXPECT_EQ(bound.controller->getParameterInfo(index, info), kResultOk) << index;
        return info;
    }

    std::u16string shown(ParamID id, double value)
    {
        String128 text = {};
        EXPECT_EQ(bound.controller->getParamStringByValue(id, value, text), kResultOk) << id;
        return text;
    }

    /** The normalized value of a text times 128, or -1 when it is refused. */
    double read(ParamID id, std::u16string text)
    {
        double value = 0;
        text.resize(128);
        return bound.controller->getParamValueByString(id, text.data(), value) == kResultOk
                   ? value * 128
                   : -1;
    }

    BoundController bound;
};

std::string utf8(const char16* text)
{
    std::string result;
    for (; *text; ++text)
        result.push_back(static_cast<char>(*text));
    return result;
}

std::u16string wide(const std::string& text)
{
    return {text.begin(), text.end()};
}

TEST_F(ParameterListTest, GetParameterInfoDescribesEveryPartsParametersInOrder)
{
    bound.initialize();
    ASSERT_EQ(bound.controller->getParameterCount(), kParameters);
    for (int part = 0; part < kParts; ++part)
        for (int line = 0; line < kParametersOfAPart; ++line) {
            const ParameterRow& row = kParameterRows[line];
            const ParameterInfo info = infoAt(part * kParametersOfAPart + line);
            const unsigned id = row.firstID + static_cast<unsigned>(part);
            const std::string number = row.hasNumber ? std::to_string(part + 1) : "";
            const std::string title = row.titleFront + number + row.titleBack;
            EXPECT_EQ(utf8(info.title), title);
            EXPECT_EQ(info.id, id) << title;
            EXPECT_EQ(utf8(info.shortTitle), "") << title;
            EXPECT_EQ(utf8(info.units), "") << title;
            EXPECT_EQ(info.stepCount, row.asksForStepCount ? 9 : 0) << title;
            EXPECT_EQ(info.defaultNormalizedValue, valueOf(id) / 128.0) << title;
            EXPECT_EQ(info.unitId, part + 2) << title;
            EXPECT_EQ(info.flags, 1) << title;
            EXPECT_EQ(bound.controller->getParamNormalized(id), valueOf(id) / 128.0) << title;
            EXPECT_EQ(bound.parameter(id)->getEditorParameter(), valueOf(id)) << title;
        }
}

TEST_F(ParameterListTest, GetParameterInfoEndsWithTheEditFlag)
{
    bound.initialize();
    const ParameterInfo info = infoAt(kAutomatable);
    EXPECT_EQ(info.id, 201005000u);
    EXPECT_EQ(utf8(info.title), "");
    EXPECT_EQ(utf8(info.shortTitle), "");
    EXPECT_EQ(utf8(info.units), "");
    EXPECT_EQ(info.stepCount, 9);
    EXPECT_EQ(info.defaultNormalizedValue, valueOf(201005000) / 128.0);
    EXPECT_EQ(info.unitId, -1);
    EXPECT_EQ(info.flags, 0);
    EXPECT_EQ(shown(kEditFlag, 0.5), u"0.5000");
    EXPECT_EQ(read(kEditFlag, u"1"), -1);
    ParameterInfo none = {};
    EXPECT_EQ(bound.controller->getParameterInfo(kParameters, none), kResultFalse);
    EXPECT_EQ(bound.controller->getParameterInfo(-1, none), kResultFalse);
}

TEST_F(ParameterListTest, GetParameterInfoLetsTheHostAutomateAllButOne)
{
    bound.initialize();
    int automatable = 0;
    std::set<ParamID> ids;
    for (int32 index = 0; index < kParameters; ++index) {
        const ParameterInfo info = infoAt(index);
        automatable += (info.flags & ParameterInfo::kCanAutomate) ? 1 : 0;
        ids.insert(info.id);
    }
    EXPECT_EQ(automatable, kAutomatable);
    EXPECT_THAT(ids, SizeIs(kParameters));
}

TEST_F(ParameterListTest, GetParameterInfoGivesTheseIDsAndTitles)
{
    bound.initialize();
    EXPECT_EQ(infoAt(0).id, 37012000u);
    EXPECT_EQ(utf8(infoAt(0).title), "Volume 1");
    EXPECT_EQ(infoAt(14).id, 37012001u);
    EXPECT_EQ(utf8(infoAt(24).title), "Assignable Function 2-1");
    EXPECT_EQ(infoAt(24).id, 19001001u);
    EXPECT_EQ(infoAt(24).unitId, 3);
    EXPECT_EQ(infoAt(210).id, 37012015u);
    EXPECT_EQ(utf8(infoAt(223).title), "Assignable Knob 2");
    EXPECT_EQ(infoAt(223).id, 37057015u);
    EXPECT_EQ(infoAt(223).unitId, 17);
}

TEST_F(ParameterListTest, GetParamStringByValueGivesTheEditorsTextsAndNeverAsksForThemAgain)
{
    bound.initialize();
    for (unsigned part = 0; part < kParts; ++part)
        for (const ParameterRow& row : kParameterRows) {
            const std::string front = std::to_string(row.firstID + part) + "=";
            EXPECT_EQ(shown(row.firstID + part, 0), wide(front + "0"));
            EXPECT_EQ(shown(row.firstID + part, 0.5), wide(front + "64"));
            EXPECT_EQ(shown(row.firstID + part, 1), wide(front + "128"));
        }
    EXPECT_THAT(bound.trace.textsOf({"library."}), IsEmpty());
}

/** The volumes of all parts have the same texts, but for what a test changes. */
class SharedValueTexts : public ParameterListTest {
protected:
    SharedValueTexts()
    {
        bound.library.valueText = [](unsigned, int value) { return std::to_string(value) + " dB"; };
    }

    /** For each part, the first part with the same ValueTexts object. */
    std::vector<unsigned> sharedWith()
    {
        std::vector<const ValueTexts*> seen;
        std::vector<unsigned> firsts;
        for (unsigned part = 0; part < kParts; ++part) {
            seen.push_back(bound.parameter(kVolume1 + part)->getValueTexts());
            const auto first = std::find(seen.begin(), seen.end(), seen.back());
            firsts.push_back(static_cast<unsigned>(first - seen.begin()));
        }
        return firsts;
    }

    static std::vector<unsigned> allButOne(unsigned other)
    {
        std::vector<unsigned> firsts(16, 0);
        firsts[other] = other;
        return firsts;
    }
};

TEST_F(SharedValueTexts, GetValueTextsIsOneObjectForAllPartsThatShowTheSame)
{
    bound.initialize();
    EXPECT_EQ(sharedWith(), std::vector<unsigned>(16, 0));
    for (unsigned part = 0; part < kParts; ++part) {
        EXPECT_EQ(shown(kVolume1 + part, 0), u"0 dB");
        EXPECT_EQ(shown(kVolume1 + part, 1), u"128 dB");
    }
}

TEST_F(SharedValueTexts, GetValueTextsIsTheFirstPartsOwnWhenItDiffers)
{
    bound.library.valueText = [](unsigned id, int value) {
        return std::to_string(value) + (id == kVolume1 && value == 128 ? " max" : " dB");
    };
    bound.initialize();
    std::vector<unsigned> firsts(16, 1);
    firsts[0] = 0;
    EXPECT_EQ(sharedWith(), firsts);
    EXPECT_EQ(shown(kVolume1, 1), u"128 max");
    EXPECT_EQ(shown(kVolume1 + 1, 1), u"128 dB");
    EXPECT_EQ(shown(kVolume16, 1), u"128 dB");
}

TEST_F(SharedValueTexts, GetValueTextsIsALaterPartsOwnWhenItDiffers)
{
    bound.library.valueText = [](unsigned id, int value) {
        return std::to_string(value) + (id == kVolume16 && value == 0 ? " off" : " dB");
    };
    bound.initialize();
    EXPECT_EQ(sharedWith(), allButOne(15));
    EXPECT_EQ(shown(kVolume16, 0), u"0 off");
    EXPECT_EQ(shown(kVolume16, 1), u"128 dB");
    EXPECT_EQ(shown(kVolume16 - 1, 0), u"0 dB");
}

TEST_F(SharedValueTexts, GetValueTextsIsAPartsOwnWhenItHasFewerOrMoreValues)
{
    for (const int32 maximum : {64, 256}) {
        BoundController other;
        other.library.valueText = bound.library.valueText;
        for (unsigned part = 0; part < kParts; ++part)
            other.library.setParameter(kVolume1 + part, {0, 0, part == 15 ? maximum : 128, 0, {}});
        other.initialize();
        EXPECT_EQ(other.parameter(kVolume1)->getValueTexts()->size(), 129u);
        EXPECT_EQ(other.parameter(kVolume16)->getValueTexts()->size(),
                  static_cast<size_t>(maximum) + 1);
        String128 text = {};
        other.controller->getParamStringByValue(kVolume16, 1, text);
        EXPECT_EQ(text, wide(std::to_string(maximum) + " dB"));
    }
}

TEST_F(SharedValueTexts, GetParamStringByValueUsesTheRangeOfEachPart)
{
    // Ranges of three values each, in which the same value has different texts.
    bound.library.setParameter(kVolume1, {0, 0, 2, 0, {}});
    bound.library.setParameter(kVolume1 + 1, {-1, -1, 1, 0, {}});
    bound.library.setParameter(kVolume1 + 2, {5, 5, 7, 0, {}});
    bound.library.valueText = [](unsigned id, int value) {
        return std::to_string(id == kVolume1 + 2 ? value - 5 : value);
    };
    bound.initialize();
    EXPECT_EQ(shown(kVolume1, 1), u"2");
    EXPECT_EQ(shown(kVolume1 + 1, 1), u"1");
    EXPECT_EQ(shown(kVolume1 + 2, 0), u"0");
    EXPECT_EQ(shown(kVolume1 + 2, 1), u"2");
}

TEST_F(ParameterListTest, GetParamValueByStringReadsTextsAsEachParameterShowsThem)
{
    bound.initialize();
    for (unsigned part = 0; part < kParts; ++part)
        for (const ParameterRow& row : kParameterRows) {
            const unsigned id = row.firstID + part;
            const bool number = row.reads == Reads::kNumber;
            const bool pan = row.reads == Reads::kPan;
            EXPECT_EQ(read(id, u"5"), number ? 5 + row.offset : -1) << id;
            EXPECT_EQ(read(id, u"+5"), number ? 5 + row.offset : -1) << id;
            EXPECT_EQ(read(id, u"-5"), number && row.offset == 64 ? 59 : -1) << id;
            EXPECT_EQ(read(id, u"L63"), pan ? 1 : number ? row.offset : -1) << id;
            EXPECT_EQ(read(id, u"C"), pan ? 64 : number ? row.offset : -1) << id;
            EXPECT_EQ(read(id, u"r63"), pan ? 127 : number ? row.offset : -1) << id;
            EXPECT_EQ(read(id, u""), -1) << id;
            EXPECT_EQ(read(id, u"5.0"), -1) << id;
        }
}

TEST_F(ParameterListTest, GetParamValueByStringReadsAFullTextWithoutTerminator)
{
    bound.initialize();
    struct {
        char16 text[128];
        char16 behind[4] = {u'7', u' ', u'.', 0};
    } field;
    std::fill_n(field.text, 128, u'0');
    field.text[127] = u'7';
    double value = -1;
    EXPECT_EQ(bound.controller->getParamValueByString(kVolume1, field.text, value), kResultOk);
    EXPECT_EQ(value, 7 / 128.0);
}

TEST_F(ParameterListTest, ParameterOperationsRefuseUnknownIDsAndNullTexts)
{
    bound.initialize();
    String128 text = {u'#'};
    double value = 0.375;
    for (const ParamID id : {0u, 37012016u, 37012u, 4294967295u}) {
        EXPECT_EQ(bound.controller->getParamStringByValue(id, 0, text), kResultFalse);
        EXPECT_EQ(bound.controller->getParamValueByString(id, text, value), kResultFalse);
        EXPECT_EQ(bound.controller->setParamNormalized(id, 0.5), kResultFalse);
        EXPECT_EQ(bound.controller->getParameter(id), nullptr);
    }
    EXPECT_EQ(bound.controller->getParamValueByString(kVolume1, nullptr, value), kResultFalse);
    EXPECT_EQ(bound.controller->getParamStringByValue(kVolume1, 0, nullptr), kResultFalse);
    EXPECT_EQ(text[0], u'#');
    EXPECT_EQ(value, 0.375);
}

TEST_F(ParameterListTest, SetParamNormalizedLeavesTheEditorsValueAlone)
{
    bound.initialize();
    EXPECT_EQ(bound.controller->setParamNormalized(kVolume1, 0.25), kResultOk);
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 0.25);
    EXPECT_EQ(bound.parameter(kVolume1)->getEditorParameter(), valueOf(kVolume1));
    EXPECT_EQ(bound.controller->setParamNormalized(kVolume1, 7), kResultOk);
    EXPECT_EQ(bound.controller->getParamNormalized(kVolume1), 1);
    bound.tick();
    EXPECT_THAT(bound.edits(), IsEmpty());
}

TEST_F(ParameterListTest, InitializeMakesAnObserverForEachParameter)
{
    bound.initialize();
    const auto observers = bound.library.liveObservers();
    ASSERT_THAT(observers, SizeIs(kParameters));
    for (size_t index = 0; index < kParameters; ++index) {
        const ObserverArguments& got = observers[index]->arguments;
        const bool flag = index == kAutomatable;
        const int part = flag ? 0 : static_cast<int>(index) / kParametersOfAPart;
        const ParameterRow& row = kParameterRows[index % kParametersOfAPart];
        EXPECT_EQ(got.owner, static_cast<void*>(bound.controller.get()));
        EXPECT_EQ(static_cast<unsigned>(got.vstParamId),
                  flag ? 201005000u : row.firstID + static_cast<unsigned>(part));
        EXPECT_EQ(got.a, flag ? 201 : row.block);
        EXPECT_EQ(got.b, flag ? 5 : row.number);
        EXPECT_EQ(got.c, part);
        EXPECT_EQ(static_cast<int>(got.mode), part == 0 ? 2 : 0);
        EXPECT_EQ(got.valueChanged, flag ? editorEditFlagChange : editorValueChange);
        EXPECT_EQ(got.beginEdit, editorBeginEditCallBack);
        EXPECT_EQ(got.endEdit, editorEndEditCallBack);
        EXPECT_EQ(bound.library.registered[index], observers[index]);
    }
    EXPECT_THAT(bound.library.registered, SizeIs(kParameters));
}

TEST_F(ParameterListTest, InitializeMakesTheObserverBeforeItAsksForTheParameter)
{
    bound.library.setParameter(19001000, {0, 0, 0, 9, {}});
    bound.library.setParameter(kEditFlag, {0, 0, 0, 9, {}});
    std::vector<std::string> function;
    std::vector<std::string> flag;
    bound.library.onCall = [&](const std::string& text) {
        if (text.find("(19001000") != std::string::npos)
            function.push_back(text);
        if (text.find("(201005000") != std::string::npos)
            flag.push_back(text);
    };
    bound.initialize();
    EXPECT_THAT(function, ElementsAre("library.getVSTObserverObject(19001000, 19, 1, 0, 2)",
                                      "library.addObserver(19001000)",
                                      "library.getParameterStepCount(19001000)",
                                      "library.getParameterMax(19001000)",
                                      "library.getParameterMin(19001000)",
                                      "library.getParameterValue(19001000)"));
    EXPECT_THAT(flag, ElementsAre("library.getVSTObserverObject(201005000, 201, 5, 0, 2)",
                                  "library.addObserver(201005000)",
                                  "library.getParameterStepCount(201005000)",
                                  "library.getParameterMax(201005000)",
                                  "library.getParameterMin(201005000)",
                                  "library.getParameterValue(201005000)"));
}

TEST_F(ParameterListTest, InitializeListsAllParametersWithoutObservers)
{
    bound.library.storesObservers = false;
    bound.initialize();
    EXPECT_EQ(bound.controller->getParameterCount(), kParameters);
    EXPECT_EQ(bound.library.registered, std::vector<VstIObserver*>(kParameters, nullptr));
    bound.tick();
    EXPECT_THAT(bound.trace.textsOf({"observer("}), IsEmpty());
    bound.controller->terminate();
    EXPECT_THAT(bound.trace.textsOf({"library.removeObserver"}), IsEmpty());
}

TEST_F(ParameterListTest, InitializeListsAllParametersWhenMakingObserversThrows)
{
    bound.library.throwAt("getVSTObserverObject");
    bound.initialize();
    EXPECT_EQ(bound.controller->getParameterCount(), kParameters);
    EXPECT_THAT(bound.library.liveObservers(), IsEmpty());
}

TEST_F(ParameterListTest, InitializeKeepsObserversWhoseRegistrationThrows)
{
    bound.library.throwAt("addObserver");
    bound.initialize();
    bound.tick();
    EXPECT_THAT(bound.trace.textsOf({"observer("}), SizeIs(kParameters));
    bound.controller->terminate();
    EXPECT_EQ(bound.trace.count("library.removeObserver(37012000)"), 1u);
    EXPECT_THAT(bound.library.liveObservers(), IsEmpty());
}

} // namespace
