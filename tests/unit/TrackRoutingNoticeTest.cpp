#include "hostapi/IDevice.h"
#include "tests/unit/ProjectScene.h"

using namespace Steinberg;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(TrackRoutingUpdate, IgnoresAnObjectThatIsNotObserved)
{
    ProjectScene scene;
    for (doubles::HostObject* object : std::initializer_list<doubles::HostObject*>{
             &scene.organ, &scene.organ.value("output"), &scene.organ.value("channel"),
             &scene.host.context})
        scene.routing.update(object->unknown(), kChanged);
    scene.routing.update(nullptr, kChanged);
    EXPECT_THAT(scene.trace.texts(), Each("hostApplicationW.getCharacterSet()"));
}

TEST(TrackRoutingUpdate, IgnoresEveryObjectWhileNothingIsObserved)
{
    TrackScene scene(olderHost());
    auto& piano = scene.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    // An object is never equal to the null pointer of what is not observed.
    for (doubles::HostObject* object : std::initializer_list<doubles::HostObject*>{
             &piano, &piano.value("output"), &scene.host.context, &scene.host.devices.mixer(),
             &scene.host.devices.mixer().value("selected")})
        for (const int32 message : {kChanged, kDestroyed})
            scene.routing.update(object->unknown(), message);
    EXPECT_THAT(scene.trace.texts(), Each("hostApplicationW.getCharacterSet()"));
}

TEST(TrackRoutingUpdate, ChangesNothingWithoutHostClasses)
{
    ProjectScene scene;
    scene.host.hide(IHostClasses::iid);
    scene.host.devices.select(1);
    scene.context.hostContext.set(nullptr);
    scene.host.devices.select(2);
    EXPECT_THAT(scene.calls({"updateHandler.", "library.", "device(", "value("}), IsEmpty());
    scene.context.hostContext.set(&scene.host.context);
}

TEST(TrackRoutingUpdate, IgnoresAnObjectOfTheOtherCharacterSet)
{
    ProjectScene scene;
    scene.host.context.characterSet =
        kResultFalse; // then other interface IDs are asked for, which this host does not have
    scene.host.devices.select(1);
    EXPECT_THAT(scene.calls({"updateHandler.", "library.", "device(", "value("}), IsEmpty());
}

TEST(TrackRoutingUpdate, KeepsTheObservedValuesWithoutUpdateHandler)
{
    ProjectScene scene;
    scene.host.hide(IUpdateHandler::iid);
    scene.organ.value("output").text = kRoutedHere;
    scene.host.devices.select(1);
    EXPECT_THAT(scene.observed(), ElementsAre("value(Piano.output)", "value(Piano.channel)"));
    EXPECT_THAT(scene.synced(), ElementsAre(kSync3)) << "the old track's channel is still held";
}

TEST(TrackRoutingUpdate, ReleasesWhatItAskedFor)
{
    ProjectScene scene;
    scene.host.traceReferences();
    scene.routing.update(scene.organ.unknown(), kChanged);
    EXPECT_THAT(scene.trace.texts(),
                ElementsAre("context.addRef()", "hostApplicationW.addRef()",
                            "hostApplicationW.getCharacterSet()", "hostApplicationW.release()",
                            "context.release()", "device(Organ).addRef()", "context.addRef()",
                            "hostClasses.addRef()", "context.release()", "hostClasses.release()",
                            "device(Organ).release()"));
}
