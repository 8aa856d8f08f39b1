#include "app/control_column.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/summary_pane.h"
#include "imagefiles/ui/histogram_panel.h"
#include "platform/paths.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

constexpr int kMargin = 8;
constexpr int kLeastTarget = 24;

QToolButton* MakeButton(QWidget* parent) {
  auto* button = new QToolButton(parent);
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  button->setFocusPolicy(Qt::NoFocus);  // Space is the key of another command; each button has its own
  button->setMinimumHeight(28);
  return button;
}

}  // namespace

ControlColumn::ControlColumn(QWidget* parent)
    : QWidget(parent),
      names_(new QComboBox(this)),
      tagged_(new QCheckBox(QStringLiteral("Ta&gged"), this)),
      previous_(MakeButton(this)),
      next_(MakeButton(this)),
      summary_(new SummaryPane(this)),
      histogram_(new imagefiles::ui::HistogramPanel(this)) {
  names_->setAccessibleName(QStringLiteral("Image name"));
  names_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  names_->setMinimumContentsLength(12);
  names_->setMinimumHeight(kLeastTarget);
  tagged_->setMinimumHeight(kLeastTarget);
  names_->setModel(new QStringListModel(names_));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kMargin);
  layout->addWidget(names_);
  layout->addWidget(tagged_);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(previous_);
  buttons->addWidget(next_);
  layout->addLayout(buttons);
  layout->addWidget(summary_, 1);
  layout->addWidget(histogram_);

  connect(names_, &QComboBox::activated, this, &ControlColumn::imageChosen);
  connect(tagged_, &QCheckBox::clicked, this, &ControlColumn::tagToggled);
}

void ControlColumn::SetActions(QAction* previous, QAction* next) {
  previous->setIconText(QStringLiteral("Previous"));
  next->setIconText(QStringLiteral("Next"));
  previous_->setDefaultAction(previous);
  next_->setDefaultAction(next);
}

void ControlColumn::ListReplaced(const catalogue::ImageList& list) {
  QStringList names;
  names.reserve(list.Count());
  for (const auto& file : list.files) names.append(platform::ui::ToLabel(platform::FileName(file)));
  const QSignalBlocker blocker(names_);
  static_cast<QStringListModel*>(names_->model())->setStringList(names);
  names_->setCurrentIndex(list.currentIndex);
}

void ControlColumn::Refresh(const catalogue::ImageList& list, const std::string& summary) {
  const QSignalBlocker blocker(names_);
  const bool valid = list.ValidIndex(list.currentIndex);
  names_->setEnabled(!list.Empty());
  names_->setCurrentIndex(valid ? list.currentIndex : -1);
  tagged_->setEnabled(valid);
  tagged_->setChecked(valid && list.marks[static_cast<std::size_t>(list.currentIndex)].tagged);
  summary_->SetText(summary);
}

void ControlColumn::ShowHistogram(const imagefiles::Histogram& counts, const imagefiles::HistogramChannels& wanted) {
  histogram_->SetHistogram(counts, wanted);
}

}  // namespace ml::app
