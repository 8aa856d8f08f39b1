#include "metadata/ui/iptc_page_view.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

#include "metadata/iptc/iptc_datasets.h"
#include "metadata/iptc/iptc_dates.h"
#include "metadata/iptc/iptc_validation.h"
#include "metadata/ui/iptc_list_editor.h"
#include "metadata/ui/messages.h"
#include "platform/ui/field_label.h"
#include "platform/ui/qt_text.h"
#include "platform/ui/remark.h"

namespace ml::metadata::ui {
namespace {

using platform::ui::PlainToolTip;
using platform::ui::ToQString;

constexpr int kMargin = 12, kSpacing = 8, kColumnSpacing = 12;

bool IsDate(int dataset) { return dataset == iptc_dataset::kDateCreated || dataset == iptc_dataset::kReleaseDate; }

bool GrowsDown(const IptcField& field) {
  return field.kind == IptcFieldKind::List || field.kind == IptcFieldKind::Text;
}

}  // namespace

IptcPageView::IptcPageView(IptcPage page, const std::function<IptcKnownTimes()>& times, QWidget* parent)
    : QScrollArea(parent), content_(new QWidget(this)) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);  // its fields bring themselves into sight
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* grid = new QGridLayout(content_);
  grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  grid->setVerticalSpacing(kSpacing);
  grid->setHorizontalSpacing(kColumnSpacing);
  grid->setColumnStretch(1, 1);
  bool grows = false;
  const auto fields = IptcFields();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (fields[i].page != page || fields[i].kind == IptcFieldKind::Time) continue;
    AddField(fields[i], fields[i].kind == IptcFieldKind::Date ? &fields[i + 1] : nullptr, *grid, times);
    grows = grows || GrowsDown(fields[i]);
  }
  if (!grows) grid->setRowStretch(grid->rowCount(), 1);
  setWidget(content_);
}

/// A field that has the keyboard loses it on its way out, and would tell of that.
IptcPageView::~IptcPageView() {
  for (const auto& [dataset, row] : rows_) row.editor->disconnect(this);
}

void IptcPageView::AddField(const IptcField& field, const IptcField* time, QGridLayout& grid,
                            const std::function<IptcKnownTimes()>& times) {
  const int line = grid.rowCount();
  auto* label = new QLabel(ToQString(field.label), content_);
  auto* remark = platform::ui::MakeRemark(content_);
  auto* editor = AddEditor(field, label, remark, content_);
  label->setBuddy(editor->Focus());
  const auto top = GrowsDown(field) ? Qt::AlignTop : Qt::AlignVCenter;
  grid.addWidget(label, line, 0, Qt::AlignLeft | top);
  if (first_ == nullptr) first_ = editor->Focus();
  if (GrowsDown(field)) grid.setRowStretch(line, 1);
  const auto side = field.kind == IptcFieldKind::Choice ? Qt::AlignLeft : Qt::Alignment();
  if (time == nullptr) {
    grid.addWidget(editor, line, 1, side);
  } else {
    auto* both = new QHBoxLayout;
    both->setSpacing(kSpacing);
    both->addWidget(editor, 1);
    both->addWidget(AddEditor(*time, nullptr, remark, content_), 1);
    const auto kind = field.dataset == iptc_dataset::kDateCreated ? IptcDateKind::Created : IptcDateKind::Release;
    auto* button = new IptcDateButton(kind, times, content_);
    connect(button, &IptcDateButton::chosen, this,
            [this, date = field.dataset, clock = time->dataset](auto chosen) { SetTime(date, clock, chosen); });
    both->addWidget(button);
    grid.addLayout(both, line, 1);
  }
  grid.addWidget(remark, line + 1, 1);
}

IptcFieldEditor* IptcPageView::AddEditor(const IptcField& field, QLabel* label, QLabel* remark, QWidget* parent) {
  auto* editor = MakeIptcFieldEditor(field, parent);
  editor->setObjectName(QStringLiteral("IptcField%1").arg(field.dataset));
  editor->Focus()->setAccessibleName(platform::ui::WithoutMnemonic(field.label));
  const int dataset = field.dataset;
  rows_[dataset] = {editor, label, remark, std::string(field.explanation)};
  connect(editor, &IptcFieldEditor::edited, this, [this, dataset] {
    Tell(rows_[dataset], {});
    Q_EMIT edited();
  });
  connect(editor, &IptcFieldEditor::left, this, [this, dataset] { Check(dataset); });
  return editor;
}

void IptcPageView::Show(const IptcSheetValues& values, const std::vector<IptcItem>& existing) {
  original_ = SheetValuesOf(existing);
  for (const auto& [dataset, row] : rows_) {
    const auto found = values.find(dataset);
    const auto count = found == values.end() ? 0 : found->second.size();
    row.editor->Show(count == 0 ? std::vector<std::string>() : found->second);
    const bool locked = IsIptcLocked(existing, dataset);
    row.editor->setEnabled(!locked);
    const auto* known = FindIptcDataset(dataset);
    const bool several = known != nullptr && !known->repeated && count > 1;
    Tell(row, locked ? ToQString(kIptcLocked) : several ? ToQString(SeveralValues(count)) : QString());
    row.editor->setToolTip(PlainToolTip(ToQString(locked ? std::string(kIptcLocked) : row.explanation)));
  }
}

void IptcPageView::AddTo(IptcSheetValues& values) const {
  for (const auto& [dataset, row] : rows_) {
    if (auto of = row.editor->Values(); !of.empty()) values[dataset] = std::move(of);
  }
}

const std::vector<std::string>& IptcPageView::OriginalOf(int dataset) const {
  static const std::vector<std::string> none;
  const auto found = original_.find(dataset);
  return found == original_.end() ? none : found->second;
}

/// Only what the user changed: the bytes of the image stay as they are.
void IptcPageView::CleanDates() {
  for (const auto& [dataset, row] : rows_) {
    const auto values = row.editor->Values();
    if (!IsDate(dataset) || values.size() != 1 || values == OriginalOf(dataset)) continue;
    if (const auto clean = CleanIptcDate(values[0]); clean != values[0]) row.editor->Enter(clean);
  }
}

void IptcPageView::Check(int dataset) {
  CleanDates();
  const auto& row = rows_[dataset];
  const auto values = row.editor->Values();
  if (values == OriginalOf(dataset)) return;
  for (const auto& value : values) {
    if (const auto sentence = CheckIptcValue(dataset, value)) return Tell(row, ToQString(*sentence));
  }
}

void IptcPageView::ShowFault(const IptcFault& fault) {
  const auto& row = rows_.at(fault.dataset);
  Tell(row, ToQString(fault.sentence));
  row.editor->Focus()->setFocus(Qt::OtherFocusReason);
  ensureWidgetVisible(row.editor);
}

void IptcPageView::FocusFirst() { first_->setFocus(Qt::OtherFocusReason); }

void IptcPageView::SetKnown(const QStringList& words) {
  for (const auto& [dataset, row] : rows_) {
    if (auto* list = qobject_cast<IptcListEditor*>(row.editor)) list->SetKnown(words);
  }
}

void IptcPageView::SetTime(int dateDataset, int timeDataset, std::optional<std::time_t> time) {
  rows_[dateDataset].editor->Enter(time ? IptcDate(*time) : std::string());
  rows_[timeDataset].editor->Enter(time ? IptcTime(*time) : std::string());
}

void IptcPageView::Tell(const Row& row, const QString& text) {
  row.remark->setText(text);
  row.remark->setVisible(!text.isEmpty());
  row.editor->Focus()->setAccessibleDescription(text.isEmpty() ? ToQString(row.explanation) : text);
}

}  // namespace ml::metadata::ui
