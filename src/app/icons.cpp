#include "app/icons.h"

#include <algorithm>
#include <array>

#include "platform/ui/symbolic_icon.h"

namespace ml::app {
namespace {

struct IconRow {
  const char* name;
  const char* themeName;  ///< in the desktop's icon theme
  const char* drawing;    ///< ours
};
constexpr std::array kIcons = {
    IconRow{"folder-open", "folder-open-symbolic", "open"},
    IconRow{"go-up", "go-up-symbolic", "up"},
    IconRow{"go-previous", "go-previous-symbolic", "previous"},
    IconRow{"go-next", "go-next-symbolic", "next"},
    IconRow{"view-refresh", "view-refresh-symbolic", "refresh"},
    IconRow{"view-main", "image-x-generic-symbolic", "main-view"},
    IconRow{"view-thumbnails", "view-grid-symbolic", "thumbnails"},
    IconRow{"view-film-strip", "sidebar-show-symbolic", "film-strip"},
    IconRow{"view-film-strip-below", "view-dual-symbolic", "film-strip-below"},
    IconRow{"thumbnails-small", "zoom-out-symbolic", "size-small"},
    IconRow{"thumbnails-large", "zoom-original-symbolic", "size-large"},
    IconRow{"thumbnails-extra-large", "zoom-in-symbolic", "size-extra-large"},
    IconRow{"tag", "tag-symbolic", "tag"},
    IconRow{"object-rotate-left", "object-rotate-left-symbolic", "rotate-left"},
    IconRow{"object-rotate-right", "object-rotate-right-symbolic", "rotate-right"},
    IconRow{"convert", "emblem-synchronizing-symbolic", "convert"},
    IconRow{"html", "web-browser-symbolic", "html"},
    IconRow{"proofs", "view-app-grid-symbolic", "proofs"},
    IconRow{"document-print", "document-print-symbolic", "print"},
    IconRow{"slideshow", "media-playback-start-symbolic", "slideshow"},
    IconRow{"view-sort-ascending", "view-sort-ascending-symbolic", "sort"},
    IconRow{"edit-select-all", "edit-select-all-symbolic", "select-all"},
    IconRow{"edit-select-none", "edit-clear-symbolic", "select-none"},
    IconRow{"edit-delete", "edit-delete-symbolic", "delete"},
    IconRow{"document-save-as", "document-save-as-symbolic", "save-as"},
    IconRow{"application-exit", "application-exit-symbolic", "quit"},
    IconRow{"help-contents", "help-contents-symbolic", "help"},
    IconRow{"help-about", "help-about-symbolic", "about"},
};

bool ThemeHasAll() {
  return std::ranges::all_of(kIcons, [](const auto& row) { return QIcon::hasThemeIcon(QLatin1String(row.themeName)); });
}

}  // namespace

QIcon CommandIcon(const QString& name) {
  static const bool fromTheme = ThemeHasAll();
  const auto row = std::ranges::find_if(kIcons, [&](const auto& r) { return name == QLatin1String(r.name); });
  if (row == kIcons.end()) return {};
  return fromTheme ? platform::ui::ThemedSymbolicIcon(QLatin1String(row->themeName))
                   : platform::ui::SymbolicIcon(QLatin1String(row->drawing));
}

QIcon ApplicationIcon() { return platform::ui::ColouredIcon(QStringLiteral("marrowlantern")); }

}  // namespace ml::app
