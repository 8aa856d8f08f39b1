#include "metadata/ui/iptc_property_sheet.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_file.h"
#include "metadata/ui/iptc_page_view.h"
#include "metadata/ui/iptc_questions.h"
#include "metadata/ui/iptc_token_button.h"
#include "metadata/ui/messages.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/ui/help_button.h"
#include "platform/ui/qt_interaction.h"
#include "platform/ui/qt_text.h"

namespace ml::metadata::ui {
namespace {

using platform::ui::PlainToolTip;
using platform::ui::ToQString;

constexpr QSize kFirstSize{720, 600}, kSmallestSize{600, 420};
constexpr int kMargin = 12, kSpacing = 8, kColumnSpacing = 16;

std::string ShownName(const std::string& path) { return platform::ToDisplayLine(platform::FileName(path)); }

QHBoxLayout* MakeLine(QWidget* parent) {
  auto* line = new QHBoxLayout(parent);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(kSpacing);
  return line;
}

/// Long texts are cut rather than making the window wider.
QLabel* MakeStatus(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  return label;
}

}  // namespace

CIptcPropertySheet::CIptcPropertySheet(IptcSheetImages images, const IptcBatchRules& rules, IptcSheetHost host,
                                       QWidget* parent)
    : QDialog(parent), images_(std::move(images)), rules_(rules), host_(std::move(host)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kMargin);
  layout->addWidget(MakeSteps());
  MakePages();
  layout->addWidget(tabs_, 1);
  if (images_.all.size() > 1) layout->addWidget(MakeRules());
  layout->addWidget(MakeButtons());
  MakeKeys();
  setMinimumSize(kSmallestSize);
  resize(kFirstSize);
  ShowImage(images_.first);
  pages_.front()->FocusFirst();
}

/// The pages outlive this part of the sheet.
CIptcPropertySheet::~CIptcPropertySheet() {
  tabs_->disconnect(this);
  for (auto* page : pages_) page->disconnect(this);
}

QWidget* CIptcPropertySheet::MakeSteps() {
  auto* whole = new QWidget(this);
  auto* line = MakeLine(whole);
  previous_ = new QPushButton(QLatin1String(kIptcPrevious), whole);
  next_ = new QPushButton(QLatin1String(kIptcNext), whole);
  connect(previous_, &QPushButton::clicked, this, [this] { Step(-1); });
  connect(next_, &QPushButton::clicked, this, [this] { Step(1); });
  for (auto* button : {previous_, next_}) {
    button->setAutoDefault(false);
    line->addWidget(button);
  }
  place_ = MakeStatus(whole);
  line->addWidget(place_, 1);
  report_ = new QLabel(whole);
  line->addWidget(report_);
  tokens_ = new IptcTokenButton([this](std::string_view token) { return host_.expand(image_, token); }, whole);
  line->addWidget(tokens_);
  return whole;
}

void CIptcPropertySheet::MakePages() {
  tabs_ = new QTabWidget(this);
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    pages_[i] = new IptcPageView(
        static_cast<IptcPage>(i), [this] { return KnownTimes(); }, tabs_);
    connect(pages_[i], &IptcPageView::edited, this, &CIptcPropertySheet::Refresh);
    tabs_->addTab(pages_[i], ToQString(kIptcPageTitles[i]));
  }
  connect(tabs_, &QTabWidget::currentChanged, this, &CIptcPropertySheet::PageChanged);
}

QWidget* CIptcPropertySheet::MakeRules() {
  auto* whole = new QWidget(this);
  auto* grid = new QGridLayout(whole);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(kColumnSpacing);
  auto* heading = new QLabel(QStringLiteral("Applying to several images"), whole);
  auto font = heading->font();
  font.setBold(true);
  heading->setFont(font);
  grid->addWidget(heading, 0, 0, 1, 2);
  struct Rule {
    const char *name, *text;
    bool& on;
  };
  const Rule rules[] = {{"IptcMergeKeywords", kMergeKeywords, rules_.merge.mergeKeywords},
                        {"IptcOnlyReplaceEmpty", kOnlyReplaceEmpty, rules_.merge.onlyReplaceEmpty},
                        {"IptcLeaveExistingIfNewEmpty", kLeaveExisting, rules_.merge.leaveExistingIfNewEmpty},
                        {"IptcExifTimestamp", kExifTimestamp, rules_.exifTimestamp}};
  int place = 0;
  for (const auto& rule : rules) {
    auto* box = new QCheckBox(QLatin1String(rule.text), whole);
    box->setObjectName(QLatin1String(rule.name));
    box->setChecked(rule.on);
    connect(box, &QCheckBox::toggled, this, [&on = rule.on](bool checked) { on = checked; });
    grid->addWidget(box, 1 + place / 2, place % 2);
    ++place;
  }
  grid->setColumnStretch(1, 1);
  return whole;
}

QPushButton* CIptcPropertySheet::MakeApply(const char* text, const QString& does, void (CIptcPropertySheet::*run)()) {
  auto* button = new QPushButton(QLatin1String(text), this);
  button->setAutoDefault(false);
  button->setToolTip(PlainToolTip(does));
  connect(button, &QPushButton::clicked, this, run);
  return button;
}

QWidget* CIptcPropertySheet::MakeButtons() {
  auto* whole = new QWidget(this);
  auto* line = MakeLine(whole);
  auto* load = new QPushButton(QLatin1String(kIptcLoad), whole);
  auto* save = new QPushButton(QLatin1String(kIptcSave), whole);
  auto* close = new QPushButton(QStringLiteral("Close"), whole);
  connect(load, &QPushButton::clicked, this, [this] { Try([this] { Load(); }); });
  connect(save, &QPushButton::clicked, this, [this] { Try([this] { Save(); }); });
  connect(close, &QPushButton::clicked, this, &CIptcPropertySheet::reject);
  for (auto* button : {load, save, close}) button->setAutoDefault(false);
  const auto merges = QStringLiteral("Merge these values into %1");
  selected_ = MakeApply(kIptcApplyToSelected, merges.arg(ToQString(Images(images_.selected.size()))),
                        &CIptcPropertySheet::ApplyToSelected);
  if (images_.selected.empty()) selected_->setToolTip(QLatin1String(kNoImagesSelected));
  auto* all =
      MakeApply(kIptcApplyToAll, merges.arg(ToQString(Images(images_.all.size()))), &CIptcPropertySheet::ApplyToAll);
  apply_ = MakeApply(kIptcApply, QStringLiteral("Write these values into the image"), &CIptcPropertySheet::Apply);
  apply_->setDefault(true);
  line->addWidget(load);
  line->addWidget(save);
  line->addWidget(platform::ui::MakeHelpButton(platform::HelpPage::Iptc, *this));
  line->addStretch(1);
  for (auto* button : {selected_, all, apply_, close}) line->addWidget(button);
  setTabOrder(apply_, close);
  return whole;
}

void CIptcPropertySheet::MakeKeys() {
  const auto add = [this](const QKeySequence& key, const std::function<void()>& act) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, act);
    return key.toString(QKeySequence::NativeText);
  };
  const auto turn = [this](int by) { ShowPage((Page() + tabs_->count() + by) % tabs_->count()); };
  add(Qt::CTRL | Qt::Key_PageUp, [turn] { turn(-1); });
  add(Qt::CTRL | Qt::Key_PageDown, [turn] { turn(1); });
  previous_->setToolTip(add(Qt::ALT | Qt::Key_Left, [this] { Step(-1); }));
  next_->setToolTip(add(Qt::ALT | Qt::Key_Right, [this] { Step(1); }));
}

int CIptcPropertySheet::Page() const { return tabs_->currentIndex(); }

void CIptcPropertySheet::ShowPage(int page) {
  if (page >= 0 && page < tabs_->count()) tabs_->setCurrentIndex(page);
}

/// A page with a fault in it is not left.
void CIptcPropertySheet::PageChanged(int page) {
  const int left = page_;
  page_ = page;
  const bool hadFocus = tabs_->isAncestorOf(focusWidget());
  if (left != page && !IsValid(left)) return;
  tokens_->Refresh();
  if (hadFocus) pages_[static_cast<std::size_t>(page)]->FocusFirst();
}

IptcSheetValues CIptcPropertySheet::Values() const {
  IptcSheetValues values;
  for (const auto* page : pages_) page->AddTo(values);
  return values;
}

IptcKnownTimes CIptcPropertySheet::KnownTimes() const {
  return {.shot = ShotTimeOf(image_), .file = FileTimeOf(image_), .now = host_.clock.now()};
}

void CIptcPropertySheet::ShowImage(std::size_t index) {
  index_ = index;
  image_ = host_.read(Path());
  original_ = SheetValuesOf(image_.iptc);
  ShowValues(original_);
  const auto place = IptcPlace(index_ + 1, images_.steps.size());
  setWindowTitle(ToQString(IptcTitle(ShownName(Path()), place)));
  place_->setText(ToQString(place + "  " + ShownName(Path())));
  previous_->setEnabled(index_ > 0);
  next_->setEnabled(index_ + 1 < images_.steps.size());
}

void CIptcPropertySheet::ShowValues(const IptcSheetValues& values) {
  for (const int dataset : {iptc_dataset::kKeywords, iptc_dataset::kSupplementalCategories}) {
    if (const auto found = values.find(dataset); found != values.end()) {
      known_.insert(found->second.begin(), found->second.end());
    }
  }
  QStringList words;
  for (const auto& word : known_) words.append(ToQString(word));
  for (auto* page : pages_) {
    page->Show(values, image_.iptc);
    page->SetKnown(words);
  }
  Refresh();
}

void CIptcPropertySheet::Refresh() {
  apply_->setEnabled(HasChanges());
  selected_->setEnabled(!images_.selected.empty());
  report_->clear();
  tokens_->Refresh();
}

void CIptcPropertySheet::Step(int by) {
  const auto to = static_cast<std::ptrdiff_t>(index_) + by;
  if (to < 0 || to >= std::ssize(images_.steps) || !MayLeave()) return;
  ShowImage(static_cast<std::size_t>(to));
}

bool CIptcPropertySheet::IsValid(std::optional<int> page) {
  for (auto* view : pages_) view->CleanDates();
  IptcSheetValues values;
  if (page) {
    pages_[static_cast<std::size_t>(*page)]->AddTo(values);
  } else {
    values = Values();
  }
  const auto fault = FirstIptcFault(values, original_);
  if (!fault) return true;
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    if (!pages_[i]->Holds(fault->dataset)) continue;
    page_ = static_cast<int>(i);  // back to it, without asking the page that is left
    ShowPage(page_);
    pages_[i]->ShowFault(*fault);
  }
  platform::ui::QtInteraction(this).message({.text = std::string(fault->sentence), .icon = platform::BoxIcon::Warning});
  return false;
}

bool CIptcPropertySheet::MayLeave() {
  if (!HasChanges()) return true;
  switch (AskAboutChanges(Path(), this)) {
    case ChangesAnswer::Apply:
      return ApplyOne();
    case ChangesAnswer::Discard:
      return true;
    case ChangesAnswer::Cancel:
      break;
  }
  return false;
}

void CIptcPropertySheet::reject() {
  if (MayLeave()) QDialog::reject();
}

bool CIptcPropertySheet::Try(const std::function<void()>& act) {
  try {
    act();
    return true;
  } catch (const platform::Cancelled&) {
    // The user knows.
  } catch (const std::exception& error) {
    platform::ui::QtInteraction(this).message({.text = error.what(), .icon = platform::BoxIcon::Error});
  }
  return false;
}

void CIptcPropertySheet::Load() {
  const auto path = host_.chooseFileToLoad(*this);
  if (!path) return;
  const auto values = SheetValuesOf(LoadIptcFile(*path));
  if (HasChanges() && !AskToReplace(*path, this)) return;
  ShowValues(values);
}

void CIptcPropertySheet::Save() {
  if (!IsValid()) return;
  const auto path = host_.chooseFileToSave(*this);
  if (path) SaveIptcFile(*path, ItemsOf(Values(), image_.iptc), platform::ExistingFile::Replace);
}

void CIptcPropertySheet::Apply() {
  if (ApplyOne()) ShowImage(index_);
}

bool CIptcPropertySheet::ApplyOne() {
  if (!IsValid()) return false;
  return Try([this] { host_.apply.one(Path(), Values()); });
}

void CIptcPropertySheet::ApplyToMany(const std::vector<std::string>& paths) {
  if (!IsValid() || !AskToWrite(paths.size(), this)) return;
  const auto entered = Values();
  const auto before = original_;
  IptcBatchReport report;
  const bool done = Try([&] {
    report = host_.apply.many(
        {.paths = paths, .values = entered, .rules = rules_.merge, .exifTimestamp = rules_.exifTimestamp}, *this);
  });
  ShowImage(index_);  // a part may have been written
  ShowValues(StillEntered(entered, before, original_));
  if (done) report_->setText(ToQString(WrittenText(report)));
}

}  // namespace ml::metadata::ui
