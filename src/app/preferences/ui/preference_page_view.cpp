#include "app/preferences/ui/preference_page_view.h"

#include <QGridLayout>
#include <QLabel>

#include "app/preferences/preference_values.h"
#include "app/preferences/ui/preference_editor.h"
#include "app/preferences/ui/scheme_example.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

constexpr int kMargin = 12;
constexpr int kSpacing = 8, kColumnSpacing = 12, kGroupSpacing = 16;
constexpr int kScrollMargin = 60;

}  // namespace

PreferencePageView::PreferencePageView(const PreferencePage& page, const FieldHelp& help, QWidget* parent)
    : QScrollArea(parent), page_(page) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);  // its fields bring themselves into sight
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* content = new QWidget(this);
  auto* grid = new QGridLayout(content);
  grid->setContentsMargins(kMargin, 0, kMargin, kMargin);
  grid->setVerticalSpacing(kSpacing);
  grid->setHorizontalSpacing(kColumnSpacing);
  grid->setColumnStretch(1, 1);
  std::string_view heading;
  for (const auto& row : page.rows) {
    if (row.heading != heading) AddHeading(*grid, content, row.heading);
    heading = row.heading;
    editors_.push_back(new PreferenceEditor(row, help, *grid, content));
    if (row.example != Example::ThumbnailScheme) continue;
    examples_.push_back(new SchemeExample(content));
    grid->addWidget(examples_.back(), grid->rowCount(), 0, 1, 2, Qt::AlignLeft);
  }
  grid->setRowStretch(grid->rowCount(), 1);
  setWidget(content);
}

void PreferencePageView::AddHeading(QGridLayout& grid, QWidget* content, std::string_view heading) {
  if (!editors_.empty()) grid.setRowMinimumHeight(grid.rowCount(), kGroupSpacing - kSpacing);
  auto* label = new QLabel(platform::ui::ToQString(heading), content);
  auto font = label->font();
  font.setBold(true);
  label->setFont(font);
  grid.addWidget(label, grid.rowCount(), 0, 1, 2);
}

void PreferencePageView::ShowValues(const settings::Settings& settings) {
  for (auto* editor : editors_) {
    const auto value = PreferenceValue(editor->Row(), settings);
    editor->ShowValue(value);
    editor->ShowRemark(RemarkOn(editor->Row(), value));
  }
  Refresh(settings);
}

void PreferencePageView::Refresh(const settings::Settings& settings) {
  for (auto* editor : editors_) editor->ShowReason(WhyNot(editor->Row(), settings));
  for (auto* example : examples_) example->Show(settings.catalogue);
}

void PreferencePageView::ScrollTo(const PreferenceEditor& editor) {
  ensureWidgetVisible(editor.Label(), 0, kScrollMargin);
}

}  // namespace ml::app
