#include "tests/doubles/ScriptedLibrary.h"
#include "tests/doubles/InProcessLibrary.h"
#include "tests/doubles/LoadedLibrary.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::ScriptedLibrary;
using doubles::Trace;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

using ConnectEntry = void (*)(VstIEditorConnect**);
using ObserverEntry = void (*)(VstIObserver**, void*, int, int, int, int,
                               void (*)(void*, unsigned, int), VstIObserver::ParamModeType,
                               void (*)(void*, unsigned), void (*)(void*, unsigned));

struct Owner {
    std::vector<std::string> events;
};
void changed(void* owner, unsigned id, int value)
{
    static_cast<Owner*>(owner)->events.push_back(doubles::callText("", "value", id, value));
}
void began(void* owner, unsigned id)
{
    static_cast<Owner*>(owner)->events.push_back(doubles::callText("", "begin", id));
}
void ended(void* owner, unsigned id)
{
    static_cast<Owner*>(owner)->events.push_back(doubles::callText("", "end", id));
}

template <typename Entry>
Entry entry(void* handle, const char* name)
{
    return reinterpret_cast<Entry>(dlsym(handle, name));
}

class ScriptedLibraryTest : public testing::Test {
protected:
    VstIObserver* makeObserver(int id)
    {
        VstIObserver* result = nullptr;
        library.makeObserver(&result, {&owner, id, 37, 12, 0, changed,
                                       VstIObserver::ParamModePartVoice, began, ended});
        return result;
    }

    Trace trace;
    Owner owner;
    ScriptedLibrary library{trace};
};

} // namespace

TEST_F(ScriptedLibraryTest, RecordsCallsWithArgumentsAndThread)
{
    const uint8 note[] = {0x90, 0x3C, 0x7F};
    library.setHostType(0);
    library.hostParameterChanged(37012000, 0.5);
    std::thread other([&] { library.receiveHostMidi(note, 3); });
    const auto otherId = other.get_id();
    other.join();
    EXPECT_THAT(trace.texts(),
                ElementsAre("library.setHostType(0)", "library.hostParameterChanged(37012000, 0.5)",
                            "library.receiveHostMidi(90 3C 7F)"));
    EXPECT_EQ(trace.all()[0].thread, std::this_thread::get_id());
    EXPECT_EQ(trace.all()[2].thread, otherId);
}

TEST_F(ScriptedLibraryTest, AnswersParametersWithRangeAndText)
{
    EXPECT_EQ(library.getParameterMax(1), 127);
    doubles::ScriptedParameter pan;
    pan.value = 64;
    pan.minimum = 1;
    pan.texts[64] = "C";
    library.setParameter(37013000, pan);
    std::string text;
    EXPECT_EQ(library.getParameterValue(37013000), 64);
    EXPECT_EQ(library.getParameterMin(37013000), 1);
    library.getParameterValueString(37013000, 64, text);
    EXPECT_EQ(text, "C");
    library.getParameterValueString(37013000, 65, text);
    EXPECT_EQ(text, "65");
}

TEST_F(ScriptedLibraryTest, FillsThirtyBytesWithoutATerminatorOnlyWithAFullText)
{
    std::vector<char> buffer(31, '#');
    library.voiceData = [](int32, int32 number) {
        return doubles::BufferAnswer{std::string(number == 0 ? 30 : 2, 'x')};
    };
    library.getVoiceDataString(0, 0, buffer.data());
    EXPECT_THAT(buffer, ElementsAreArray(std::string(30, 'x') + "#"));
    library.getVoiceDataString(0, 1, buffer.data());
    EXPECT_THAT(buffer, ElementsAreArray("xx" + std::string(1, '\0') + std::string(27, 'x') + "#"));
}

TEST_F(ScriptedLibraryTest, MatchesPosixExtendedExpressions)
{
    const char* pattern = "^Tavrin RDL3/RDL5( [0-9]+)? Port[1-5]$";
    EXPECT_TRUE(library.matchRegularExpression(pattern, "Tavrin RDL3/RDL5 2 Port4"));
    EXPECT_TRUE(library.matchRegularExpression(pattern, "Tavrin RDL3/RDL5 Port1"));
    EXPECT_FALSE(library.matchRegularExpression(pattern, "Tavrin RDL3/RDL5 Port6"));
    EXPECT_FALSE(library.matchRegularExpression(pattern, "Port4"));
    EXPECT_FALSE(library.matchRegularExpression(nullptr, "Port4"));
}

TEST_F(ScriptedLibraryTest, TurnsAKnobThroughTheObserversCallbacks)
{
    library.turn(37012000, 5);
    EXPECT_THAT(owner.events, IsEmpty()) << "nobody observes yet";
    ASSERT_NE(makeObserver(37012000), nullptr);
    library.turn(37012000, 65);
    EXPECT_THAT(owner.events,
                ElementsAre(".begin(37012000)", ".value(37012000, 65)", ".end(37012000)"));
    EXPECT_EQ(library.getParameterValue(37012000), 65);
}

TEST_F(ScriptedLibraryTest, ComplainsAboutUseAfterTheEnd)
{
    auto* observer = makeObserver(37012000);
    library.addObserver(observer);
    library.removeObserver(observer);
    observer->destroy();
    EXPECT_THAT(library.complaints(), IsEmpty());
    EXPECT_EQ(library.observer(37012000), nullptr);

    observer->checkChange();
    observer->destroy();
    library.destroy();
    library.start();
    EXPECT_THAT(library.complaints(), ElementsAre("observer(37012000).checkChange() after destroy",
                                                  "observer(37012000).destroy() after destroy",
                                                  "library.start() after destroy"));
}

TEST_F(ScriptedLibraryTest, ComplainsAboutAnObserverThatIsDestroyedWhileRegistered)
{
    auto* observer = makeObserver(37012000);
    library.addObserver(observer);
    observer->destroy();
    EXPECT_THAT(library.complaints(), ElementsAre("observer(37012000) destroyed while registered"));
}

TEST_F(ScriptedLibraryTest, ThrowsWhereItIsToldTo)
{
    library.throwAt("start");
    EXPECT_THROW(library.start(), doubles::ScriptedFailure);
    EXPECT_NO_THROW(library.setHostType(1));
}

TEST(InProcessLibrary, IsFoundThroughItsHandle)
{
    Trace trace;
    doubles::InProcessLibrary library(trace);
    const auto connect = entry<ConnectEntry>(library.handle(), "getVSTEditorConnectObject");
    const auto observe = entry<ObserverEntry>(library.handle(), "getVSTObserverObject");
    ASSERT_NE(connect, nullptr);
    ASSERT_NE(observe, nullptr);

    VstIEditorConnect* connection = nullptr;
    connect(&connection);
    EXPECT_EQ(connection, &library);
    VstIObserver* observer = nullptr;
    observe(&observer, nullptr, 7, 1, 2, 3, changed, VstIObserver::ParamModePart, began, ended);
    EXPECT_EQ(observer, library.observer(7));
    EXPECT_THAT(trace.texts(), ElementsAre("library.getVSTEditorConnectObject()",
                                           "library.getVSTObserverObject(7, 1, 2, 3, 0)"));
}

TEST(LoadedLibrary, RecordsIntoTheTestsTraceAndStartsAfreshEachTime)
{
    Trace trace;
    {
        doubles::LoadedLibrary loaded(trace, VSTK2X_SCRIPTED_LIBRARY);
        ASSERT_TRUE(loaded);
        loaded->latencyMode = 2;
        VstIEditorConnect* connection = nullptr;
        entry<ConnectEntry>(loaded.handle(), "getVSTEditorConnectObject")(&connection);
        ASSERT_EQ(connection, &*loaded);
        EXPECT_EQ(connection->getLatencyMode(), 2);
        EXPECT_THAT(trace.texts(),
                    ElementsAre("library.getVSTEditorConnectObject()", "library.getLatencyMode()"));
        EXPECT_FALSE(loaded.closeAndAskWhetherStillLoaded());
    }
    doubles::LoadedLibrary again(trace, VSTK2X_SCRIPTED_LIBRARY);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->latencyMode, 0);
}

TEST(LoadedLibrary, TellsWhetherSomebodyElseStillHoldsTheFile)
{
    Trace trace;
    doubles::LoadedLibrary loaded(trace, VSTK2X_SCRIPTED_LIBRARY);
    void* other = dlopen(VSTK2X_SCRIPTED_LIBRARY, RTLD_LAZY);
    ASSERT_NE(other, nullptr);
    EXPECT_TRUE(loaded.closeAndAskWhetherStillLoaded());
    dlclose(other);
}

TEST(LoadedLibrary, VariantsLackWhatTheirNamesSay)
{
    Trace trace;
    const auto has = [&](const char* file, const char* name) {
        doubles::LoadedLibrary loaded(trace, file);
        EXPECT_TRUE(loaded) << file;
        return loaded && dlsym(loaded.handle(), name) != nullptr;
    };
    EXPECT_TRUE(has(VSTK2X_SCRIPTED_LIBRARY, "getVSTEditorConnectObject"));
    EXPECT_TRUE(has(VSTK2X_SCRIPTED_LIBRARY, "getVSTObserverObject"));
    EXPECT_FALSE(has(VSTK2X_SCRIPTED_LIBRARY_WITHOUT_CONNECT, "getVSTEditorConnectObject"));
    EXPECT_TRUE(has(VSTK2X_SCRIPTED_LIBRARY_WITHOUT_CONNECT, "getVSTObserverObject"));
    EXPECT_TRUE(has(VSTK2X_SCRIPTED_LIBRARY_WITHOUT_OBSERVER, "getVSTEditorConnectObject"));
    EXPECT_FALSE(has(VSTK2X_SCRIPTED_LIBRARY_WITHOUT_OBSERVER, "getVSTObserverObject"));

    doubles::LoadedLibrary null(trace, VSTK2X_SCRIPTED_LIBRARY_NULL_CONNECTION);
    ASSERT_TRUE(null);
    auto* connection = &*null;
    VstIEditorConnect* stored = connection;
    entry<ConnectEntry>(null.handle(), "getVSTEditorConnectObject")(&stored);
    EXPECT_EQ(stored, nullptr);
}
