#include "app/preferences/preference_changes.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/preferences/preference_pages.h"
#include "app/preferences/preference_values.h"

namespace ml::app {
namespace {

using enum Effect;
using Changes = std::vector<std::pair<const char*, const char*>>;

settings::Settings With(settings::Settings settings, const Changes& changes) {
  for (const auto& [key, value] : changes) SetPreference(*FindPreference(key), value, settings);
  return settings;
}

struct EffectCase {
  const char* name;
  Changes changes;
  Effects effects;
};
TEST(EffectsOfChanges, AreThoseThatShowThem) {
  const auto before = settings::MakeDefaultSettings();
  for (const auto& c :
       {EffectCase{"Nothing", {}, {}}, EffectCase{"SameValue", {{"ConfirmDelete", "1"}}, {}},
        EffectCase{"LaterOnly", {{"LoadDirectoryAtStartup", "0"}, {"Wraparound", "1"}, {"ThreadPriority", "2"}}, {}},
        EffectCase{"Size", {{"ExtraLargeThumbnailSize", "300"}}, {ResizeThumbnails}},
        EffectCase{"Embedded", {{"IgnoreEmbeddedThumbnails", "1"}}, {RemakeThumbnails}},
        EffectCase{"Turn", {{"UseJpegExifOrientation", "1"}}, {RemakeThumbnails, ReloadPicture}},
        EffectCase{"Monitor", {{"MonitorProfile", "/a.icc"}}, {RemakeThumbnails, ReloadPicture}},
        EffectCase{"Hidden", {{"ShowHiddenDirectories", "1"}}, {ReloadDirectory}},
        EffectCase{"Scheme", {{"ThumbnailBackgroundColour", "White"}}, {RedrawThumbnails}},
        EffectCase{"Histogram", {{"HistogramRed", "0"}}, {RedrawHistogram}},
        EffectCase{"Optimised", {{"OptimiseSize", "2"}}, {ReloadPicture}},
        EffectCase{"Several",
                   {{"HistogramBlue", "0"}, {"OutlineTaggedThumbnails", "2"}, {"IPTCcomments", "0"}},
                   {RedrawHistogram, RedrawThumbnails}}}) {
    const auto now = With(before, c.changes);
    EXPECT_EQ(EffectsOf(before, now), c.effects) << c.name;
    EXPECT_EQ(EffectsOf(now, before), c.effects) << c.name << ", the way back";
  }
}

TEST(TakePreferences, LeavesAloneWhatTheWindowDoesNotOffer) {
  auto live = settings::MakeDefaultSettings();
  auto edited = With(live, {{"ThumbnailSize", "2"}, {"OpenEditorCmdLine", "a=b"}});
  edited.catalogue.splitterPos = 7;
  live.catalogue.splitterPos = 321;
  live.window.left = 5;
  live.recentDirectories = {"/new"};
  TakePreferences(edited, live);
  EXPECT_EQ(live.catalogue.thumbnailSize, 2);
  EXPECT_EQ(live.editor.openEditorCmdLine, "a=b");
  EXPECT_EQ(live.catalogue.splitterPos, 321);
  EXPECT_EQ(live.window.left, 5);
  EXPECT_EQ(live.recentDirectories, settings::RecentDirectories{"/new"});
  EXPECT_TRUE(SamePreferences(live, edited));
}

TEST(RestoreDefaults, PutsBackOnePageOnly) {
  const auto defaults = settings::MakeDefaultSettings();
  for (const auto& page : PreferencePages()) {
    auto settings = defaults;
    settings.catalogue.imageFilename = "/kept.jpg";
    for (const auto& each : PreferencePages()) {
      for (const auto& row : each.rows) SetPreference(row, PreferenceValue(row, defaults) == "0" ? "1" : "0", settings);
    }
    RestoreDefaults(page, settings);
    EXPECT_EQ(settings.catalogue.imageFilename, "/kept.jpg");
    for (const auto& each : PreferencePages()) EXPECT_EQ(HasDefaults(each, settings), &each == &page) << each.title;
  }
}

}  // namespace
}  // namespace ml::app
