#include "presets/PresetMetaInfo.h"

#include "tests/doubles/PresetXml.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

using namespace Steinberg::Vst;
using doubles::presetXml;

TEST(PresetMetaInfo, PutsEachValueWhereTheMediaBrowserLooksForIt)
{
    EXPECT_EQ(presetMetaInfo("Strings", "Violin", "Acoustic"),
              presetXml("Strings", "Violin", "Acoustic"));
    EXPECT_EQ(presetMetaInfo("", "", ""), presetXml("", "", ""));
}

TEST(PresetMetaInfo, TakesValuesThatAreEscapedAlready)
{
    const auto xml = presetMetaInfo("Drum&amp;Perc", "Hits&amp;Stabs", "");
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(xml.c_str()));
    EXPECT_STREQ(document.child("MetaInfo")
                     .find_child_by_attribute("Attribute", "id", "MusicalInstrument")
                     .attribute("value")
                     .value(),
                 "Drum&Perc|Hits&Stabs");
}

TEST(PresetMetaInfo, EscapesNothingItself)
{
    const auto xml = presetMetaInfo("Drum&Perc", "<b>", "\"");
    EXPECT_EQ(xml, presetXml("Drum&Perc", "<b>", "\""));
    // So only texts of the tables may be given, and never a voice's name.
    pugi::xml_document document;
    EXPECT_FALSE(document.load_string(xml.c_str()));
}

TEST(PresetMetaInfo, ReplacesNothingWithinAValue)
{
    EXPECT_EQ(presetMetaInfo("REPLACE_CHARACTER", "REPLACE_CHARACTER", "a"),
              presetXml("REPLACE_CHARACTER", "REPLACE_CHARACTER", "a"));
}
