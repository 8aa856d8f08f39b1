#include "metadata/ui/iptc_text_editor.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "platform/ui/field_frame.h"
#include "platform/ui/qt_text.h"

namespace ml::metadata::ui {
namespace {

using platform::ui::ToQString;

constexpr int kTextLines = 4;
constexpr int kChoiceWidthInCharacters = 24;

/// Turning the wheel over a page scrolls it and changes nothing.
class ChoiceBox final : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

QString ChoiceText(const IptcChoice& choice) {
  const auto value = ToQString(choice.value);
  return choice.meaning.empty() ? value : value + QStringLiteral(" - ") + ToQString(choice.meaning);
}

/// A usual value goes into the line without its meaning.
QComboBox* MakeChoice(const IptcField& field, QWidget* parent) {
  auto* box = new ChoiceBox(parent);
  box->setEditable(true);
  box->setInsertPolicy(QComboBox::NoInsert);
  box->setCompleter(nullptr);
  box->setMinimumContentsLength(kChoiceWidthInCharacters);
  for (const auto& choice : field.choices) box->addItem(ChoiceText(choice), ToQString(choice.value));
  box->setCurrentIndex(-1);
  QObject::connect(box, &QComboBox::activated, box, [box](int index) {
    if (index >= 0) box->lineEdit()->setText(box->itemData(index).toString());
  });
  return box;
}

}  // namespace

IptcTextEditor::IptcTextEditor(const IptcField& field, QWidget* parent) : IptcFieldEditor(field, parent) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(field.kind == IptcFieldKind::Text ? MakeText() : MakeLine(field));
  setFocusProxy(Focus());
}

QWidget* IptcTextEditor::MakeText() {
  text_ = new QPlainTextEdit(this);
  text_->setTabChangesFocus(true);
  platform::ui::MarkAsField(*text_);
  const int margins = 2 * (text_->frameWidth() + static_cast<int>(text_->document()->documentMargin()));
  text_->setMinimumHeight(text_->fontMetrics().lineSpacing() * kTextLines + margins);
  connect(text_, &QPlainTextEdit::textChanged, this, &IptcFieldEditor::edited);
  text_->installEventFilter(this);
  return text_;
}

QWidget* IptcTextEditor::MakeLine(const IptcField& field) {
  QWidget* whole = nullptr;
  if (field.kind == IptcFieldKind::Choice) {
    auto* box = MakeChoice(field, this);
    line_ = box->lineEdit();
    whole = box;
  } else {
    whole = line_ = new QLineEdit(this);
  }
  connect(line_, &QLineEdit::textChanged, this, &IptcFieldEditor::edited);
  connect(line_, &QLineEdit::editingFinished, this, &IptcFieldEditor::left);
  return whole;
}

bool IptcTextEditor::eventFilter(QObject* watched, QEvent* event) {
  if (watched == text_ && event->type() == QEvent::FocusOut) Q_EMIT left();
  return IptcFieldEditor::eventFilter(watched, event);
}

QWidget* IptcTextEditor::Focus() {
  if (text_ != nullptr) return text_;
  auto* box = qobject_cast<QComboBox*>(line_->parentWidget());
  return box != nullptr ? static_cast<QWidget*>(box) : line_;
}

QString IptcTextEditor::Text() const { return text_ != nullptr ? text_->toPlainText() : line_->text(); }

void IptcTextEditor::SetText(const QString& text) {
  if (text_ != nullptr) {
    text_->setPlainText(text);
  } else {
    line_->setText(text);
    line_->setCursorPosition(0);
  }
}

void IptcTextEditor::Show(const std::vector<std::string>& values) {
  const QSignalBlocker quiet(this);
  original_ = values;
  SetText(values.empty() ? QString() : ToQString(values.back()));
  shown_ = Text();
}

std::vector<std::string> IptcTextEditor::Values() const {
  const auto text = Text();
  if (text == shown_) return original_;
  if (text.isEmpty()) return {};
  return {text.toStdString()};
}

void IptcTextEditor::Insert(const QString& text) {
  if (text_ != nullptr) {
    text_->insertPlainText(text);
  } else {
    line_->insert(text);
  }
  Focus()->setFocus(Qt::OtherFocusReason);
}

void IptcTextEditor::Enter(const std::string& value) { SetText(ToQString(value)); }

}  // namespace ml::metadata::ui
