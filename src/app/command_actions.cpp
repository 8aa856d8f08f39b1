#include "app/command_actions.h"

#include <QAction>
#include <QActionGroup>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <optional>

#include "app/command_runner.h"
#include "app/icons.h"
#include "app/messages.h"
#include "app/recent_directories.h"
#include "platform/ui/field_label.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;
using platform::ui::WithoutMnemonic;

/// Nothing stands for a line between groups.
constexpr std::optional<CommandId> kToolBar[] = {
    CommandId::OpenDirectory,
    CommandId::ParentDirectory,
    std::nullopt,
    CommandId::MainView,
    CommandId::ThumbnailView,
    CommandId::FilmStripView,
    std::nullopt,
    CommandId::PreviousImage,
    CommandId::NextImage,
    std::nullopt,
    CommandId::TagImage,
    CommandId::RotateLeft,
    CommandId::RotateRight,
    std::nullopt,
    CommandId::ConvertRawImage,
    CommandId::Html,
    CommandId::Proofs,
    CommandId::Print,
    std::nullopt,
    CommandId::Slideshow,
    std::nullopt,
    CommandId::Delete,
    CommandId::SmallThumbnails,
    CommandId::LargeThumbnails,
    CommandId::ExtraLargeThumbnails,
};
constexpr auto kFirstAtRight = CommandId::SmallThumbnails;

/// What is off stays out of it, and so does the mode on show, so that each mode has its own.
constexpr std::optional<CommandId> kContextMenu[] = {
    CommandId::PreviousImage,
    CommandId::NextImage,
    std::nullopt,
    CommandId::TagImage,
    CommandId::AddTag,
    CommandId::RemoveTag,
    std::nullopt,
    CommandId::RotateLeft,
    CommandId::RotateRight,
    CommandId::ConvertRawImage,
    CommandId::BatchConvert,
    CommandId::ExtractJpegs,
    CommandId::PlayVideo,
    CommandId::PlaySound,
    std::nullopt,
    CommandId::ViewActualImage,
    CommandId::EditImage,
    CommandId::EditComments,
    CommandId::EditIptcData,
    CommandId::ImageProperties,
    std::nullopt,
    CommandId::RenameImage,
    CommandId::BatchRename,
    CommandId::MoveToFolder,
    CommandId::CopyToFolder,
    CommandId::Delete,
    std::nullopt,
    CommandId::SelectAll,
    CommandId::InvertSelection,
    CommandId::SelectTagged,
    CommandId::MoveTaggedToStart,
    std::nullopt,
    CommandId::MainView,
    CommandId::ThumbnailView,
    CommandId::FilmStripView,
    CommandId::ShowExifData,
    CommandId::ShootingData,
    std::nullopt,
    CommandId::RefreshDirectory,
};

constexpr std::optional<CommandId> kTreeMenu[] = {
    CommandId::NewFolder, CommandId::RenameFolder,        CommandId::Delete, std::nullopt,
    CommandId::Explore,   CommandId::DirectoryProperties, std::nullopt,      CommandId::RefreshDirectory,
};

QList<QKeySequence> KeysOf(const CommandRow& row) {
  return QKeySequence::listFromString(ToQString(row.keys), QKeySequence::PortableText);
}

QAction* MakeAction(const CommandRow& row, QObject* parent) {
  auto* action = new QAction(ToQString(row.text), parent);
  action->setObjectName(WithoutMnemonic(row.text));
  const auto keys = KeysOf(row);
  action->setShortcuts(keys);
  auto tip = ToQString(row.tip);
  if (!HasHandler(row.id)) tip = ToQString(kNotInThisVersion).arg(tip);
  action->setStatusTip(tip);
  if (!row.keys.empty()) tip += QStringLiteral(" (%1)").arg(keys.first().toString(QKeySequence::NativeText));
  action->setToolTip(tip);
  if (!row.icon.empty()) action->setIcon(CommandIcon(ToQString(row.icon)));
  action->setCheckable(row.mark != Mark::None);
  return action;
}

/// There is no use in going where one is. The film strip goes on to its other arrangement.
bool IsModeOnShow(const QAction& action, CommandId id) {
  return action.isChecked() && (id == CommandId::MainView || id == CommandId::ThumbnailView);
}

/// Makes the marks of one menu group exclude each other for the eye; which one is set is decided by the rules.
void MakeExclusive(QAction* action, QActionGroup*& group, QObject* parent) {
  if (!group) {
    group = new QActionGroup(parent);
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
  }
  group->addAction(action);
}

}  // namespace

CommandActions::CommandActions(QObject* parent) : QObject(parent) {
  QActionGroup* radio = nullptr;
  const CommandRow* last = nullptr;
  for (const auto& row : Commands()) {
    if (last && (last->menu != row.menu || last->group != row.group)) radio = nullptr;
    last = &row;
    auto*& action = actions_[static_cast<std::size_t>(row.id)];
    action = MakeAction(row, this);
    if (row.mark == Mark::Radio) MakeExclusive(action, radio, this);
    connect(action, &QAction::triggered, this, [this, id = row.id] { Q_EMIT triggered(id, 0); });
  }
  for (std::size_t place = 0; place < recent_.size(); ++place) {
    recent_[place] = new QAction(this);
    recent_[place]->setVisible(false);
    recent_[place]->setStatusTip(ToQString(FindCommand(CommandId::RecentDirectory).tip));
    connect(recent_[place], &QAction::triggered, this,
            [this, place] { Q_EMIT triggered(CommandId::RecentDirectory, static_cast<int>(place)); });
  }
}

void CommandActions::Update(const CommandState& state) {
  for (const auto& row : Commands()) {
    auto* action = At(row.id);
    action->setEnabled(HasHandler(row.id) && row.enabled(state));
    if (row.checked) action->setChecked(row.checked(state));
    if (row.keysIn) action->setShortcuts(row.keysIn(state) ? KeysOf(row) : QList<QKeySequence>());
  }
}

void CommandActions::FillMenuBar(QMenuBar& bar) {
  const CommandRow* last = nullptr;
  for (const auto& row : Commands()) {
    if (row.group == kKeysOnly) {
      bar.window()->addAction(At(row.id));
      continue;
    }
    auto*& menu = menus_[static_cast<std::size_t>(row.menu)];
    if (!menu) {
      const auto title = ToQString(MenuTitle(row.menu));
      if (row.menu == Menu::Sort) MenuOf(Menu::View)->addSeparator();
      menu = row.menu == Menu::Sort ? MenuOf(Menu::View)->addMenu(title) : bar.addMenu(title);
      menu->setToolTipsVisible(true);  // why something is off
    } else if (last && (last->menu != row.menu || last->group != row.group)) {
      menu->addSeparator();
    }
    last = &row;
    if (row.id != CommandId::RecentDirectory) {
      menu->addAction(At(row.id));
      continue;
    }
    for (auto* entry : recent_) menu->addAction(entry);
  }
}

void CommandActions::FillToolBar(QToolBar& bar) {
  for (const auto& id : kToolBar) {
    if (id == kFirstAtRight) {
      auto* room = new QWidget(&bar);
      room->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
      bar.addWidget(room);
    }
    if (!id) {
      bar.addSeparator();
      continue;
    }
    bar.addAction(At(*id));
    auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(At(*id)));
    if (!button) continue;
    button->setAccessibleName(WithoutMnemonic(FindCommand(*id).text));
    button->setFocusPolicy(Qt::NoFocus);  // Space is the key of another command; each button has its own
    if (*id != CommandId::OpenDirectory) continue;
    auto* menu = new QMenu(button);
    for (auto* entry : recent_) menu->addAction(entry);
    button->setMenu(menu);
    button->setPopupMode(QToolButton::MenuButtonPopup);
  }
}

void CommandActions::FillContextMenu(QMenu& menu) const { FillMenu(menu, kContextMenu); }

void CommandActions::FillTreeMenu(QMenu& menu) const { FillMenu(menu, kTreeMenu); }

void CommandActions::FillMenu(QMenu& menu, std::span<const std::optional<CommandId>> rows) const {
  bool pending = false;
  for (const auto& id : rows) {
    if (!id) {
      pending = !menu.isEmpty();
    } else if (At(*id)->isEnabled() && !IsModeOnShow(*At(*id), *id)) {
      if (pending) menu.addSeparator();
      pending = false;
      menu.addAction(At(*id));
    }
  }
}

void CommandActions::ShowRecent(const settings::RecentDirectories& recent) {
  for (std::size_t place = 0; place < recent_.size(); ++place) {
    const bool used = place < recent.size();
    recent_[place]->setVisible(used);
    if (used) recent_[place]->setText(ToQString(RecentDirectoryText(place, recent[place])));
  }
}

}  // namespace ml::app
