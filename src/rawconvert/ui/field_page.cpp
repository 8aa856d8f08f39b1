#include "rawconvert/ui/field_page.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

#include "platform/ui/field_label.h"
#include "platform/ui/qt_text.h"

namespace ml::rawconvert::ui {
namespace {

using platform::ui::ToQString;

constexpr int kMargin = 12;
constexpr int kSpacing = 8, kColumnSpacing = 12, kGroupSpacing = 12;

}  // namespace

void PageField::SetReason(std::string_view reason) {
  const auto tip = platform::ui::PlainToolTip(ToQString(reason));
  for (auto* widget : {static_cast<QWidget*>(label_), whole_}) {
    if (widget == nullptr) continue;
    widget->setEnabled(reason.empty());
    widget->setToolTip(tip);
  }
  if (!reason.empty()) remark_->hide();
}

void PageField::SetRemark(const std::string& sentence) {
  remark_->setText(ToQString(sentence));
  remark_->setVisible(!sentence.empty() && Counts());
  whole_->setAccessibleDescription(remark_->text());
}

bool PageField::Counts() const { return whole_->isEnabledTo(whole_->window()); }

FieldPage::FieldPage(QWidget* parent)
    : QScrollArea(parent), content_(new QWidget(this)), grid_(new QGridLayout(content_)) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);  // its fields bring themselves into sight
  grid_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  grid_->setVerticalSpacing(kSpacing);
  grid_->setHorizontalSpacing(kColumnSpacing);
  grid_->setColumnStretch(1, 1);
}

/// With room for the scroll bar, which remarks may bring in.
QSize FieldPage::sizeHint() const {
  return content_->sizeHint() + QSize(style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this), 0);
}

void FieldPage::AddHeading(const char* text) {
  if (grid_->count() > 0) grid_->setRowMinimumHeight(grid_->rowCount(), kGroupSpacing - kSpacing);
  auto* label = new QLabel(QString::fromLatin1(text), content_);
  auto font = label->font();
  font.setBold(true);
  label->setFont(font);
  grid_->addWidget(label, grid_->rowCount(), 0, 1, 2);
}

PageField FieldPage::AddField(const char* name, const char* label, QWidget* whole, QWidget* focus) {
  const int row = grid_->rowCount();
  auto* text = platform::ui::MakeFieldLabel(label, *focus, content_);
  focus->setObjectName(QLatin1String(name));
  grid_->addWidget(text, row, 0, Qt::AlignLeft);
  const bool wide = whole->sizePolicy().horizontalPolicy() == QSizePolicy::Expanding;
  grid_->addWidget(whole, row, 1, wide ? Qt::Alignment() : Qt::AlignLeft);
  return {text, whole, AddRemark(whole)};
}

std::vector<PageField> FieldPage::AddParts(const std::vector<Part>& parts) {
  const int line = grid_->rowCount();
  auto* row = new QWidget(content_);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSpacing);
  grid_->addWidget(row, line, 1, Qt::AlignLeft);
  std::vector<PageField> fields;
  for (const auto& part : parts) {
    auto* label = platform::ui::MakeFieldLabel(part.label, *part.field, content_);
    part.field->setObjectName(QLatin1String(part.name));
    if (fields.empty()) {
      grid_->addWidget(label, line, 0, Qt::AlignLeft);
    } else {
      layout->addSpacing(kColumnSpacing);
      layout->addWidget(label);
    }
    layout->addWidget(part.field);
    fields.emplace_back(label, part.field, AddRemark(row));
  }
  return fields;
}

PageField FieldPage::AddButton(const char* name, QAbstractButton* button) {
  button->setObjectName(QLatin1String(name));
  grid_->addWidget(button, grid_->rowCount(), 0, 1, 2, Qt::AlignLeft);
  return {nullptr, button, AddRemark(button)};
}

QLabel* FieldPage::AddRemark(QWidget* field) {
  auto* remark = new QLabel(field->parentWidget());
  remark->setTextFormat(Qt::PlainText);
  remark->setWordWrap(true);
  remark->setObjectName(QStringLiteral("remark"));
  remark->hide();
  grid_->addWidget(remark, grid_->rowCount(), 1);
  return remark;
}

QWidget* FieldPage::Row(std::initializer_list<QWidget*> widgets) {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSpacing);
  for (auto* widget : widgets) layout->addWidget(widget);
  return row;
}

void FieldPage::Close() {
  grid_->setRowStretch(grid_->rowCount(), 1);
  setWidget(content_);
}

}  // namespace ml::rawconvert::ui
