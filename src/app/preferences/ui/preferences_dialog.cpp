#include "app/preferences/ui/preferences_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <algorithm>

#include "app/preferences/preference_changes.h"
#include "app/preferences/preference_pages.h"
#include "app/preferences/preference_values.h"
#include "app/preferences/ui/preference_editor.h"
#include "app/preferences/ui/preference_page_view.h"
#include "app/preferences/ui/search_line.h"
#include "platform/ui/help_button.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;

constexpr QSize kFirstSize{800, 560}, kSmallestSize{640, 360};
/// Of a window; how much it is is known only once it shows.
constexpr QSize kRoomForFrame{8, 32};
constexpr int kMargin = 12;
constexpr int kTitlesWidth = 160;
constexpr int kTitleHeight = 28;

QString CountText(std::size_t shown, std::size_t count) {
  if (count == 0) return QStringLiteral("Nothing found");
  return QStringLiteral("%1 of %2 found").arg(shown + 1).arg(count);
}

}  // namespace

CPreferencesDialog::CPreferencesDialog(const settings::Settings& settings, const FieldHelp& help, QWidget* parent)
    : QDialog(parent), applied_(settings), edited_(settings) {
  setWindowTitle(QStringLiteral("Preferences"));
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kMargin);
  layout->setColumnStretch(1, 1);
  layout->setRowStretch(1, 1);
  MakeSearch(*layout);
  titles_ = new QListWidget(this);
  titles_->setAccessibleName(QStringLiteral("Pages"));
  titles_->setFixedWidth(kTitlesWidth);
  layout->addWidget(titles_, 1, 0);
  stack_ = new QStackedWidget(this);
  layout->addWidget(stack_, 1, 1);
  MakePages(help);
  MakeButtons(*layout);
  connect(titles_, &QListWidget::currentRowChanged, this, [this](int row) {
    stack_->setCurrentIndex(row);
    Refresh();
  });
  for (auto* page : pages_) page->ShowValues(edited_);
  ShowPage(0);
  titles_->setFocus();
  const QSize room = screen()->availableSize() - kRoomForFrame;
  setMinimumSize(kSmallestSize.boundedTo(room));
  resize(kFirstSize.boundedTo(room));
}

void CPreferencesDialog::MakeSearch(QGridLayout& layout) {
  auto* line = new QHBoxLayout;
  search_ = new SearchLine(this);
  auto* label = new QLabel(QStringLiteral("&Find:"), this);
  label->setBuddy(search_);
  searchResult_ = new QLabel(this);
  searchResult_->setMinimumWidth(kTitlesWidth);
  line->addWidget(label);
  line->addWidget(search_, 1);
  line->addWidget(searchResult_);
  layout.addLayout(line, 0, 0, 1, 2);
  connect(search_, &QLineEdit::textChanged, this, &CPreferencesDialog::Search);
  connect(search_, &SearchLine::stepWanted, this, &CPreferencesDialog::GoToFound);
  connect(search_, &SearchLine::answerWanted, this, [this] {
    if (!found_.empty()) EditorAt(found_[shown_]).Field()->setFocus(Qt::TabFocusReason);
  });
  auto* key = new QShortcut(QKeySequence::Find, this);
  connect(key, &QShortcut::activated, search_, [this] {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
  });
}

void CPreferencesDialog::MakePages(const FieldHelp& help) {
  for (const auto& page : PreferencePages()) {
    auto* view = new PreferencePageView(page, help, stack_);
    for (std::size_t row = 0; row < view->Editors().size(); ++row) {
      const FoundPreference place{pages_.size(), row};
      connect(view->Editors()[row], &PreferenceEditor::edited, this,
              [this, place](const std::string& value) { Edit(place, value); });
    }
    pages_.push_back(view);
    stack_->addWidget(view);
    auto* title = new QListWidgetItem(ToQString(page.title), titles_);
    title->setSizeHint({0, kTitleHeight});
  }
}

void CPreferencesDialog::MakeButtons(QGridLayout& layout) {
  auto* line = new QHBoxLayout;
  restore_ = new QPushButton(QStringLiteral("Restore &Defaults"), this);
  restore_->setAutoDefault(false);
  restore_->setToolTip(QStringLiteral("Puts the fields of this page back; Cancel undoes it"));
  connect(restore_, &QPushButton::clicked, this, &CPreferencesDialog::RestorePage);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
  apply_ = buttons->button(QDialogButtonBox::Apply);
  apply_->setText(QStringLiteral("Appl&y"));
  apply_->setToolTip(QStringLiteral("Puts the changes into force; Cancel no longer undoes them"));
  connect(apply_, &QPushButton::clicked, this, &CPreferencesDialog::Apply);
  buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("OK"));
  buttons->button(QDialogButtonBox::Ok)->setDefault(true);
  buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));
  connect(buttons, &QDialogButtonBox::accepted, this, &CPreferencesDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &CPreferencesDialog::reject);
  line->addWidget(restore_);
  line->addWidget(platform::ui::MakeHelpButton(platform::HelpPage::Preferences, *this));
  line->addStretch(1);
  line->addWidget(buttons);
  layout.addLayout(line, 2, 0, 1, 2);
}

int CPreferencesDialog::Page() const { return titles_->currentRow(); }

void CPreferencesDialog::ShowPage(int page) {
  if (page >= 0 && page < titles_->count()) titles_->setCurrentRow(page);
}

void CPreferencesDialog::accept() {
  if (Apply()) QDialog::accept();
}

bool CPreferencesDialog::Apply() {
  if (const auto* place = FirstRefused()) {
    Show(*place);
    EditorAt(*place).Field()->setFocus(Qt::OtherFocusReason);
    return false;
  }
  if (SamePreferences(applied_, edited_)) return true;
  applied_ = edited_;
  Q_EMIT applied(applied_);
  Refresh();
  return true;
}

/// The worst value of a field that is off does not matter.
const FoundPreference* CPreferencesDialog::FirstRefused() const {
  const auto found = std::ranges::find_if(
      refused_, [this](const auto& entry) { return Counts(EditorAt(entry.second).Row(), edited_); });
  return found == refused_.end() ? nullptr : &found->second;
}

bool CPreferencesDialog::HasChanges() const { return FirstRefused() || !SamePreferences(applied_, edited_); }

PreferenceEditor& CPreferencesDialog::EditorAt(const FoundPreference& place) const {
  return *PageAt(place.page).Editors()[place.row];
}

void CPreferencesDialog::Edit(const FoundPreference& place, const std::string& value) {
  auto& editor = EditorAt(place);
  const auto& row = editor.Row();
  const auto remark = RemarkOn(row, value);
  editor.ShowRemark(remark);
  if (remark.refused) {
    refused_[row.key] = place;
  } else {
    refused_.erase(row.key);
    SetPreference(row, value, edited_);
  }
  Refresh();
}

void CPreferencesDialog::RestorePage() {
  auto& view = PageAt(static_cast<std::size_t>(Page()));
  RestoreDefaults(view.Page(), edited_);
  for (const auto& row : view.Page().rows) refused_.erase(row.key);
  view.ShowValues(edited_);
  Refresh();
}

void CPreferencesDialog::Refresh() {
  for (auto* page : pages_) page->Refresh(edited_);
  apply_->setEnabled(HasChanges());
  const auto& page = PageAt(static_cast<std::size_t>(std::max(Page(), 0))).Page();
  const bool refused = std::ranges::any_of(page.rows, [this](const auto& row) { return refused_.contains(row.key); });
  restore_->setEnabled(refused || !HasDefaults(page, edited_));
}

void CPreferencesDialog::Show(const FoundPreference& place) {
  ShowPage(static_cast<int>(place.page));
  PageAt(place.page).ScrollTo(EditorAt(place));
}

void CPreferencesDialog::Search(const QString& query) {
  for (const auto& place : found_) EditorAt(place).SetFound(false);
  found_ = FindPreferences(query.toStdString());
  shown_ = 0;
  for (const auto& place : found_) EditorAt(place).SetFound(true);
  ShowFound();
}

void CPreferencesDialog::GoToFound(int step) {
  if (found_.empty()) return;
  const auto count = found_.size();
  shown_ = (shown_ + count + static_cast<std::size_t>(step)) % count;
  ShowFound();
}

void CPreferencesDialog::ShowFound() {
  const bool searching = !search_->text().trimmed().isEmpty();
  searchResult_->setText(searching ? CountText(shown_, found_.size()) : QString());
  for (int page = 0; page < titles_->count(); ++page) {
    const auto count = std::ranges::count(found_, static_cast<std::size_t>(page), &FoundPreference::page);
    const auto title = ToQString(PageAt(static_cast<std::size_t>(page)).Page().title);
    titles_->item(page)->setText(count > 0 ? QStringLiteral("%1 (%2)").arg(title).arg(count) : title);
    titles_->item(page)->setForeground(searching && count == 0 ? palette().placeholderText() : QBrush());
  }
  if (!found_.empty()) Show(found_[shown_]);
}

}  // namespace ml::app
