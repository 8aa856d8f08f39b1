#pragma once

#include "settings/groups/catalogue_settings.h"
#include "settings/groups/colour_settings.h"
#include "settings/groups/display_settings.h"
#include "settings/groups/editor_settings.h"
#include "settings/groups/email_settings.h"
#include "settings/groups/html_settings.h"
#include "settings/groups/iptc_settings.h"
#include "settings/groups/print_settings.h"
#include "settings/groups/profile_table.h"
#include "settings/groups/proof_settings.h"
#include "settings/groups/raw_settings.h"
#include "settings/groups/rename_settings.h"
#include "settings/groups/shooting_data_settings.h"
#include "settings/groups/slideshow_settings.h"
#include "settings/groups/window_settings.h"

/// All that the program remembers between runs. Plain values, copied freely: whoever starts long work takes a
/// copy, so that later edits do not reach it. setting_table.h names the key of each value; settings_store.h
/// keeps them in a file. Flags are integers as they are stored: any value but 0 is on.
namespace ml::settings {

struct Settings {
  CatalogueSettings catalogue;
  RawSettings raw;
  DisplaySettings display;
  SlideshowSettings slideshow;
  ColourSettings colour;
  PrintSettings printing;
  RenameSettings rename;
  ShootingDataSettings shootingData;
  EditorSettings editor;
  HtmlSettings html;
  ProofSettings proofs;
  IptcSettings iptc;
  EmailSettings email;

  WindowSettings window;
  DialogPlaces dialogPlaces;
  RecentDirectories recentDirectories;
  ProfileTable profiles;
};

/// The defaults, with those that depend on the machine filled in: "<data>/templates" as home of the gallery
/// templates and "Converted Images" in the home directory.
Settings MakeDefaultSettings();

}  // namespace ml::settings
