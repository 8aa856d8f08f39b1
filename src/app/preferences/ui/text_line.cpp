#include "app/preferences/ui/text_line.h"

#include <QFile>
#include <QHBoxLayout>
#include <QLineEdit>

namespace ml::app {
namespace {

constexpr int kTextWidthInCharacters = 20;

}  // namespace

QLineEdit* MakeTextLine(QWidget* parent) {
  auto* line = new QLineEdit(parent);
  line->setMinimumWidth(line->fontMetrics().averageCharWidth() * kTextWidthInCharacters);
  return line;
}

QString LineText(const std::string& bytes) {
  return QFile::decodeName(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

QWidget* SideBySide(QWidget* field, QWidget* button, QWidget* parent) {
  auto* whole = new QWidget(parent);
  auto* layout = new QHBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(field, 1);
  layout->addWidget(button);
  return whole;
}

}  // namespace ml::app
