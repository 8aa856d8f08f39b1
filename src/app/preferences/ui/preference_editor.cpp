#include "app/preferences/ui/preference_editor.h"

#include <QFontInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

#include "app/preferences/preference_search.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;

constexpr int kFoundOpacity = 90;
constexpr int kSmallMargin = 4;

QLabel* MakeNote(std::string_view text, QWidget* page) {
  auto* note = new QLabel(ToQString(text), page);
  note->setForegroundRole(QPalette::PlaceholderText);
  note->setWordWrap(true);
  return note;
}

}  // namespace

PreferenceEditor::PreferenceEditor(const PreferenceRow& row, const FieldHelp& help, QGridLayout& grid, QWidget* page)
    : QObject(page),
      row_(row),
      field_(MakeFieldWidgets(
          row, help, [this](const std::string& value) { Q_EMIT edited(value); }, page)) {
  const int line = grid.rowCount();
  if (std::holds_alternative<CheckField>(row.field)) {
    grid.addWidget(field_.whole, line, 0, 1, 2, Qt::AlignLeft);
  } else {
    label_ = new QLabel(ToQString(row.label), page);
    label_->setBuddy(field_.focus);
    grid.addWidget(label_, line, 0, Qt::AlignLeft);
    const bool wide = std::holds_alternative<ProfileField>(row.field) ||
                      std::holds_alternative<CommandLineField>(row.field) ||
                      std::holds_alternative<FormatField>(row.field);
    grid.addWidget(field_.whole, line, 1, wide ? Qt::Alignment() : Qt::AlignLeft);
  }
  field_.focus->setObjectName(ToQString(row.key));
  field_.focus->setAccessibleName(ToQString(PlainLabel(row.label)));
  AddRemark(grid, page);
  if (field_.below != nullptr) grid.addWidget(field_.below, grid.rowCount(), 1);
  if (!row.note.empty()) grid.addWidget(MakeNote(row.note, page), grid.rowCount(), 1);
  SetTip(ToQString(row.explanation));
}

void PreferenceEditor::AddRemark(QGridLayout& grid, QWidget* page) {
  remark_ = new QWidget(page);
  auto* layout = new QHBoxLayout(remark_);
  layout->setContentsMargins(0, 0, 0, kSmallMargin);
  const int edge = QFontInfo(page->font()).pixelSize() + kSmallMargin;
  auto* icon = new QLabel(remark_);
  icon->setPixmap(page->style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(edge));
  remarkText_ = new QLabel(remark_);
  remarkText_->setTextFormat(Qt::PlainText);
  remarkText_->setWordWrap(true);
  layout->addWidget(icon);
  layout->addWidget(remarkText_, 1);
  remark_->hide();
  grid.addWidget(remark_, grid.rowCount(), 1);
}

QWidget* PreferenceEditor::Label() const { return label_ != nullptr ? static_cast<QWidget*>(label_) : field_.whole; }

void PreferenceEditor::ShowValue(const std::string& value) { field_.show(value); }

void PreferenceEditor::ShowRemark(const Remark& remark) {
  told_ = remark;
  remarkText_->setText(ToQString(remark.text));
  ShowOrHideRemark();
}

/// What is wrong with a value that does not count is nobody's business.
void PreferenceEditor::ShowOrHideRemark() {
  const bool tell = counts_ && !told_.text.empty();
  remark_->setVisible(tell);
  field_.focus->setAccessibleDescription(ToQString(tell ? told_.text : std::string(row_.explanation)));
}

void PreferenceEditor::ShowReason(std::string_view reason) {
  counts_ = reason.empty();
  field_.whole->setEnabled(counts_);
  if (label_ != nullptr) label_->setEnabled(counts_);
  ShowOrHideRemark();
  SetTip(ToQString(reason.empty() ? std::string(row_.explanation) : std::string(reason)));
}

void PreferenceEditor::SetFound(bool found) {
  auto* label = Label();
  auto palette = label->parentWidget()->palette();
  if (found) {
    auto tint = palette.color(QPalette::Highlight);
    tint.setAlpha(kFoundOpacity);
    palette.setColor(QPalette::Window, tint);
  }
  label->setPalette(found ? palette : QPalette());
  label->setBackgroundRole(found ? QPalette::Window : QPalette::NoRole);
  label->setAutoFillBackground(found);
}

void PreferenceEditor::SetTip(const QString& tip) {
  for (auto* widget : {field_.whole, field_.focus, Label()}) widget->setToolTip(platform::ui::PlainToolTip(tip));
}

}  // namespace ml::app
