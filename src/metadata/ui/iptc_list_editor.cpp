#include "metadata/ui/iptc_list_editor.h"

#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStringListModel>
#include <algorithm>

#include "metadata/iptc/iptc_sheet_values.h"
#include "platform/ui/field_frame.h"
#include "platform/ui/qt_text.h"

namespace ml::metadata::ui {
namespace {

using platform::ui::ToQString;

constexpr int kSpacing = 8;
constexpr int kShownRole = Qt::UserRole, kBytesRole = Qt::UserRole + 1;

/// The bytes, unless the text was changed in place.
std::string ValueOf(const QListWidgetItem& item) {
  if (item.text() == item.data(kShownRole).toString()) return item.data(kBytesRole).toByteArray().toStdString();
  return item.text().toStdString();
}

bool IsReturn(const QKeyEvent& key) { return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter; }

}  // namespace

IptcListEditor::IptcListEditor(const IptcField& field, QWidget* parent)
    : IptcFieldEditor(field, parent),
      line_(new QLineEdit(this)),
      list_(new QListWidget(this)),
      remove_(new QPushButton(QStringLiteral("&Remove"), this)),
      known_(new QStringListModel(this)) {
  auto* add = new QPushButton(QStringLiteral("A&dd"), this);
  for (auto* button : {add, remove_}) button->setAutoDefault(false);
  line_->setPlaceholderText(QStringLiteral("One or several, separated by commas"));
  auto* completer = new QCompleter(known_, line_);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  line_->setCompleter(completer);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
  platform::ui::MarkAsField(*list_);
  list_->setAccessibleName(QStringLiteral("Entries"));
  list_->setToolTip(QStringLiteral("F2 changes an entry, Delete removes it"));
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSpacing);
  layout->addWidget(line_, 0, 0);
  layout->addWidget(add, 0, 1);
  layout->addWidget(list_, 1, 0);
  layout->addWidget(remove_, 1, 1, Qt::AlignTop);
  setFocusProxy(line_);
  setTabOrder(line_, add);
  setTabOrder(add, list_);
  setTabOrder(list_, remove_);
  remove_->setEnabled(false);
  connect(add, &QPushButton::clicked, this, &IptcListEditor::AddFromLine);
  connect(remove_, &QPushButton::clicked, this, &IptcListEditor::RemoveSelected);
  connect(line_, &QLineEdit::textChanged, this, &IptcFieldEditor::edited);
  connect(list_, &QListWidget::itemChanged, this, &IptcFieldEditor::edited);
  connect(list_, &QListWidget::itemSelectionChanged, this,
          [this] { remove_->setEnabled(!list_->selectedItems().isEmpty()); });
  line_->installEventFilter(this);
  list_->installEventFilter(this);
}

void IptcListEditor::Insert(const QString& text) {
  line_->insert(text);
  line_->setFocus(Qt::OtherFocusReason);
}

QWidget* IptcListEditor::Focus() { return line_; }

void IptcListEditor::SetKnown(const QStringList& words) { known_->setStringList(words); }

void IptcListEditor::Show(const std::vector<std::string>& values) {
  const QSignalBlocker quiet(this);
  line_->clear();
  list_->clear();
  for (const auto& value : values) Append(value);
  remove_->setEnabled(false);
}

std::vector<std::string> IptcListEditor::Values() const {
  std::vector<std::string> values;
  for (int row = 0; row < list_->count(); ++row) {
    if (auto value = ValueOf(*list_->item(row)); !value.empty()) values.push_back(std::move(value));
  }
  for (const auto& word : SplitIptcList(line_->text().toStdString())) {
    if (std::ranges::find(values, word) == values.end()) values.push_back(word);
  }
  return values;
}

void IptcListEditor::Append(const std::string& value) {
  auto* item = new QListWidgetItem(ToQString(value));
  item->setData(kShownRole, item->text());
  item->setData(kBytesRole, QByteArray::fromStdString(value));
  item->setFlags(item->flags() | Qt::ItemIsEditable);
  list_->addItem(item);
}

void IptcListEditor::Enter(const std::string& value) {
  for (const auto& word : SplitIptcList(value)) {
    bool isThere = false;
    for (int row = 0; row < list_->count(); ++row) isThere = isThere || ValueOf(*list_->item(row)) == word;
    if (!isThere) Append(word);
  }
  Q_EMIT edited();
}

void IptcListEditor::AddFromLine() {
  const auto words = line_->text().toStdString();
  line_->clear();
  Enter(words);
  line_->setFocus();
}

void IptcListEditor::RemoveSelected() {
  const int row = list_->currentRow();
  qDeleteAll(list_->selectedItems());
  list_->setCurrentRow(std::min(row, list_->count() - 1));
  Q_EMIT edited();
}

void IptcListEditor::Paste() { Enter(QApplication::clipboard()->text().toStdString()); }

/// Return in the line adds and does not press the window's button.
bool IptcListEditor::OnKey(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<QKeyEvent&>(*event);
  if (watched == line_ && IsReturn(key) && !line_->text().isEmpty()) {
    AddFromLine();
    return true;
  }
  if (watched != list_) return false;
  if (key.key() == Qt::Key_Delete) RemoveSelected();
  if (key.matches(QKeySequence::Paste)) Paste();
  return key.key() == Qt::Key_Delete || key.matches(QKeySequence::Paste);
}

/// Whoever comes by keyboard finds an entry chosen, for F2 and Delete to act on.
bool IptcListEditor::eventFilter(QObject* watched, QEvent* event) {
  if (watched == list_ && event->type() == QEvent::FocusIn && list_->selectedItems().isEmpty() && list_->count() > 0) {
    list_->setCurrentRow(std::max(list_->currentRow(), 0), QItemSelectionModel::ClearAndSelect);
  }
  return OnKey(watched, event) || IptcFieldEditor::eventFilter(watched, event);
}

}  // namespace ml::metadata::ui
