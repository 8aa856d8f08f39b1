#include "settings/settings_io.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/map_backend.h"

namespace ml::settings {
namespace {

using test::MapBackend;

Settings Read(const MapBackend& backend) {
  Settings settings;
  ReadSettings(backend, settings);
  return settings;
}

/// All that a run writes into an empty store.
MapBackend Written(const Settings& settings) {
  MapBackend backend;
  WriteSettings(settings, Settings(), SaveScope::Everything, backend);
  return backend;
}

TEST(ReadSettings, LeavesWhatIsStoredInAnotherForm) {
  struct Case {
    const char* key;
    MapBackend::Value stored;
  };
  const Settings defaults;
  for (const auto& [key, stored] :
       {Case{"JpegQuality", "90"}, Case{"ThumbnailBackgroundColour", 7},
        Case{"ThumbnailBackgroundColour", std::string(512, 'x')}, Case{"RawGamma", 2},
        Case{"RawUsmAmount", "0." + std::string(510, '9')}, Case{"PrintCaptionFont", std::string(118, '0')},
        Case{"PrintCaptionFont", std::string(122, '0')}, Case{"PrintCaptionFont", std::string(119, '0') + "x"},
        Case{"PrintCaptionFont", 0}}) {
    MapBackend backend;
    backend.values[{"", key}] = stored;
    const auto settings = Read(backend);
    EXPECT_EQ(settings.raw.jpegQuality, 95) << key;
    EXPECT_EQ(settings.catalogue.thumbnailBackgroundColour, "Gray") << key;
    EXPECT_EQ(settings.raw.gamma, 1.0) << key;
    EXPECT_EQ(settings.raw.usmAmount, 0.7) << key;
    EXPECT_EQ(settings.printing.captionFont, defaults.printing.captionFont) << key;
  }
}

TEST(ReadSettings, TakesTheLongestText) {
  MapBackend backend;
  backend.PutText({"RenameFormatString"}, std::string(511, 'x'));
  EXPECT_EQ(Read(backend).rename.formatString.size(), 511u);
}

TEST(ReadSettings, ReadsDecimalsFromTheFrontOfTheirText) {
  MapBackend backend;
  backend.PutText({"RawGamma"}, " 1.5 and more");
  backend.PutText({"RawMidPointValue"}, "nonsense");
  const auto settings = Read(backend);
  EXPECT_EQ(settings.raw.gamma, 1.5);
  EXPECT_EQ(settings.raw.midPoint, 0.0);
}

TEST(WriteSettings, BringsEveryDecimalBack) {
  for (const double value : {-0.0, 0.1, 1e-300, 123456789.25, std::numeric_limits<double>::infinity()}) {
    Settings settings;
    settings.raw.blackPointPercent = value;
    const auto back = Read(Written(settings)).raw.blackPointPercent;
    EXPECT_EQ(back, value);
    EXPECT_EQ(std::signbit(back), std::signbit(value));
  }
}

TEST(WriteSettings, WritesWhatItNeverReadsAndReadsWhatItNeverWrites) {
  Settings settings;
  settings.display.optimiseSize = 2;
  settings.raw.falseColourFilter = 0;
  settings.raw.falseResolutionFilter = 1;
  auto backend = Written(settings);
  EXPECT_EQ(backend.Integer({"OptimiseSize"}), 2);
  EXPECT_FALSE(backend.Has({"FalseColourFilter"}));
  EXPECT_FALSE(backend.Has({"FalseResolutionFilter"}));
  // 336 of the table, OptimiseSize, WindowZoomed and WindowState, the selected model of the profiles
  EXPECT_EQ(backend.values.size(), 336u + 1 + 2 + 1);

  backend.PutInteger({"FalseColourFilter"}, 0);
  const auto back = Read(backend);
  EXPECT_EQ(back.display.optimiseSize, 0);
  EXPECT_EQ(back.raw.falseColourFilter, 0);
  WriteSettings(back, back, SaveScope::Everything, backend);
  EXPECT_EQ(backend.Integer({"OptimiseSize"}), 0) << "the value of the last run is stored, changed or not";
}

TEST(WriteSettings, LeavesToTheStoreWhatThisRunDidNotChange) {
  MapBackend backend;
  backend.PutInteger({"SplitterPos"}, 300);
  backend.PutText({"RawGamma"}, "1.50");
  const auto loaded = Read(backend);
  auto settings = loaded;
  settings.raw.jpegQuality = 80;
  settings.catalogue.thumbnailMode = 1;  // the default, set again: no change
  // another copy ends first
  backend.PutInteger({"SplitterPos"}, 400);
  backend.PutInteger({"ThumbnailMode"}, 2);
  backend.PutInteger({"JpegQuality"}, 70);
  backend.PutInteger({"HtmlCopyIptc"}, 5);
  backend.PutText({"MRU0"}, "/theirs");

  WriteSettings(settings, loaded, SaveScope::Everything, backend);
  EXPECT_EQ(backend.Integer({"SplitterPos"}), 400);
  EXPECT_EQ(backend.Integer({"ThumbnailMode"}), 2);
  EXPECT_EQ(backend.Integer({"JpegQuality"}), 80);
  EXPECT_EQ(backend.Integer({"HtmlCopyIptc"}), 5);
  EXPECT_EQ(backend.Text({"RawGamma"}), "1.50");
  EXPECT_EQ(backend.Text({"MRU0"}), "/theirs");
  EXPECT_EQ(backend.Integer({"emailMaxWidth"}), 640) << "what the store lacks is filled in";
}

TEST(WriteSettings, RemembersTheWindow) {
  Settings settings;
  settings.window = {.left = -8, .top = std::nullopt, .right = 900, .bottom = 700, .zoomed = 1, .state = {"\0\xff", 2}};
  auto backend = Written(settings);
  EXPECT_FALSE(backend.Has({"WindowTop"}));
  EXPECT_EQ(backend.Text({"WindowState"}), "00FF");
  EXPECT_EQ(Read(backend).window, settings.window);
  backend.PutText({"WindowState"}, "0G");
  EXPECT_EQ(Read(backend).window.state, "");
}

TEST(WriteSettings, RemembersDialogsInTheirTable) {
  Settings settings;
  settings.dialogPlaces = {{"Preferences", {"\0\xff", 2}}, {"Keys", "a"}};
  auto backend = Written(settings);
  EXPECT_EQ(backend.Text({"Preferences", "Dialogs"}), "00FF");
  backend.PutText({"Keys", "Dialogs"}, "junk");
  const auto loaded = Read(backend);
  EXPECT_EQ(loaded.dialogPlaces, (DialogPlaces{{"Preferences", {"\0\xff", 2}}}));
  backend.PutText({"Preferences", "Dialogs"}, "11");
  WriteSettings(loaded, loaded, SaveScope::Everything, backend);
  EXPECT_EQ(backend.Text({"Preferences", "Dialogs"}), "11") << "another copy moved it";
}

TEST(WriteSettings, ShortensTheRecentDirectories) {
  Settings loaded;
  loaded.recentDirectories = {"/a", "/b", "/c"};
  auto backend = Written(loaded);
  auto settings = Read(backend);
  EXPECT_EQ(settings.recentDirectories, loaded.recentDirectories);
  settings.recentDirectories = {"/d"};
  WriteSettings(settings, loaded, SaveScope::Everything, backend);
  EXPECT_EQ(Read(backend).recentDirectories, RecentDirectories{"/d"});
  EXPECT_FALSE(backend.Has({"MRU1"}));
}

TEST(WriteSettings, KeepsProfilesInTheirTable) {
  Settings settings;
  settings.profiles.linear["Canon EOS D30"] = "/p/linear.icc";
  settings.profiles.normal["Canon EOS D30"] = "/p/normal.icc";
  settings.profiles.flags["Canon EOS D30"] = 6;
  settings.profiles.selectedModel = 4;
  auto backend = Written(settings);
  EXPECT_EQ(backend.Text({"L:Canon EOS D30", "Profiles"}), "/p/linear.icc");
  EXPECT_EQ(backend.Integer({"Canon EOS D30", "Profiles"}), 6);
  EXPECT_EQ(backend.Integer({"Model", "Profiles"}), 4);

  const auto loaded = Read(backend);
  EXPECT_EQ(loaded.profiles.normal, settings.profiles.normal);
  EXPECT_EQ(loaded.profiles.flags, settings.profiles.flags);
  auto changed = loaded;
  changed.profiles.flags["Canon EOS D30"] = 0;
  backend.PutText({"L:Canon EOS D30", "Profiles"}, "/theirs.icc");
  WriteSettings(changed, loaded, SaveScope::Everything, backend);
  EXPECT_EQ(backend.Integer({"Canon EOS D30", "Profiles"}), 0);
  EXPECT_EQ(backend.Text({"L:Canon EOS D30", "Profiles"}), "/theirs.icc");
}

}  // namespace
}  // namespace ml::settings
