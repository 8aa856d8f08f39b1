#include "batch/ui/rename_list_pane.h"

#include <QClipboard>
#include <QFontInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "batch/ui/messages.h"
#include "batch/ui/rename_list_model.h"
#include "batch/ui/rename_rows.h"
#include "platform/ui/field_frame.h"
#include "platform/ui/qt_text.h"

namespace ml::batch::ui {
namespace {

using platform::ui::PlainToolTip;
using platform::ui::ToLabel;
using platform::ui::ToQString;

constexpr int kSpacing = 8;
constexpr int kRowHeight = 24, kSmallestList = 3 * kRowHeight;

}  // namespace

RenameListPane::RenameListPane(QWidget* parent) : QWidget(parent) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSpacing);
  MakeList();
  layout->addWidget(MakeSummary());
  layout->addWidget(list_, 1);
}

void RenameListPane::MakeList() {
  list_ = new QTableView(this);
  model_ = new RenameListModel(style()->standardIcon(QStyle::SP_MessageBoxWarning), list_);
  list_->setModel(model_);
  list_->setAccessibleName(QLatin1String(kListLabel).mid(1).chopped(1));
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setTabKeyNavigation(false);
  list_->setWordWrap(false);
  list_->setTextElideMode(Qt::ElideMiddle);
  list_->setShowGrid(false);
  list_->setMinimumHeight(kSmallestList);
  list_->setFont(platform::ui::WithTabularFigures(font()));
  platform::ui::MarkAsField(*list_);
  list_->verticalHeader()->hide();
  list_->verticalHeader()->setDefaultSectionSize(std::max(kRowHeight, fontMetrics().height() + kSpacing));
  auto* header = list_->horizontalHeader();
  header->setHighlightSections(false);
  header->setSectionsClickable(false);
  for (const int column : {RenameListModel::kOldName, RenameListModel::kNewName}) {
    header->setSectionResizeMode(column, QHeaderView::Stretch);
  }
  header->resizeSection(RenameListModel::kRemark,
                        fontMetrics().horizontalAdvance(QLatin1String(kWidestRemark)) + 2 * kRowHeight);
  auto* copy = new QShortcut(QKeySequence::Copy, list_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(copy, &QShortcut::activated, this, &RenameListPane::CopyList);
}

QWidget* RenameListPane::MakeSummary() {
  auto* whole = new QWidget(this);
  auto* layout = new QHBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSpacing);
  auto* heading = new QLabel(QLatin1String(kListLabel), whole);
  heading->setBuddy(list_);
  const int edge = QFontInfo(font()).pixelSize() + kSpacing / 2;
  sign_ = new QLabel(whole);
  sign_->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(edge));
  summary_ = new QLabel(whole);
  summary_->setObjectName(QStringLiteral("summary"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  nextProblem_ = new QPushButton(QLatin1String(kNextProblem), whole);
  nextProblem_->setAutoDefault(false);
  auto kept = nextProblem_->sizePolicy();
  kept.setRetainSizeWhenHidden(true);
  nextProblem_->setSizePolicy(kept);
  connect(nextProblem_, &QPushButton::clicked, this, &RenameListPane::GoToNextProblem);
  layout->addWidget(heading);
  layout->addSpacing(kSpacing);
  layout->addWidget(sign_);
  layout->addWidget(summary_, 1);
  layout->addWidget(nextProblem_);
  return whole;
}

void RenameListPane::Show(const NewNames& names) {
  names_ = names;
  model_->SetRows(RowsOf(names_));
  ShowSummary();
}

void RenameListPane::ShowSummary() {
  const auto& rows = model_->Rows();
  const auto problems =
      static_cast<std::size_t>(std::ranges::count_if(rows, [](const auto& row) { return !row.problem.empty(); }));
  const auto changed =
      static_cast<std::size_t>(std::ranges::count_if(rows, [](const auto& row) { return row.oldName != row.newName; }));
  auto text = RenamedText(changed, rows.size());
  if (problems > 0) {
    const auto& first = rows[static_cast<std::size_t>(model_->NextProblem(-1))];
    text = ProblemsText(problems, rows.size(), first.remark, first.newName);
  }
  summary_->setText(ToLabel(text));
  summary_->setToolTip(PlainToolTip(ToQString(text)));
  sign_->setVisible(problems > 0);
  nextProblem_->setVisible(problems > 0);
}

QString RenameListPane::ProblemText() const { return model_->NextProblem(-1) < 0 ? QString() : summary_->text(); }

void RenameListPane::GoToFirstProblem() {
  list_->setCurrentIndex({});
  GoToNextProblem();
}

void RenameListPane::GoToNextProblem() {
  const int row = model_->NextProblem(list_->currentIndex().row());
  if (row < 0) return;
  list_->setCurrentIndex(model_->index(row, RenameListModel::kOldName));
  list_->scrollTo(list_->currentIndex(), QAbstractItemView::PositionAtCenter);
}

void RenameListPane::CopyList() {
  NewNames chosen;
  for (const auto& index : list_->selectionModel()->selectedRows()) {
    chosen.rows.push_back(names_.rows[static_cast<std::size_t>(index.row())]);
  }
  QGuiApplication::clipboard()->setText(ToQString(PreviewText(chosen.rows.empty() ? names_ : chosen)));
}

}  // namespace ml::batch::ui
