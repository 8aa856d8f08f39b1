#include "platform/ui/qt_text.h"

#include <QFile>
#include <QFontDatabase>
#include <QFontMetricsF>

#include "platform/paths.h"
#include "platform/text.h"

namespace ml::platform::ui {
namespace {

bool DigitsHaveOneWidth(const QFont& font) {
  const QFontMetricsF metrics(font);
  const double width = metrics.horizontalAdvance(QLatin1Char('0'));
  for (char digit = '1'; digit <= '9'; ++digit) {
    if (qAbs(metrics.horizontalAdvance(QLatin1Char(digit)) - width) > 0.01) return false;
  }
  return true;
}

}  // namespace

QString ToQString(std::string_view bytes) { return QString::fromStdString(ToDisplayUtf8(bytes)); }

QString ToLabel(std::string_view bytes) { return QString::fromStdString(ToDisplayLine(bytes)); }

QString DialogStart(std::string_view path) {
  while (true) {
    auto name = QFile::decodeName(QByteArray(path.data(), static_cast<qsizetype>(path.size())));
    if (PathFromQt(name) == path) return name;
    while (path.ends_with('/')) path.remove_suffix(1);
    path = DirectoryOf(path);
  }
}

std::string PathFromQt(const QString& path) { return QFile::encodeName(path).toStdString(); }

QString PlainToolTip(const QString& text) {
  if (text.isEmpty()) return {};
  return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

QFont WithTabularFigures(const QFont& font) {
  if (DigitsHaveOneWidth(font)) return font;
  for (const auto* family : {"Noto Sans", "DejaVu Sans", "Liberation Sans"}) {
    QFont other = font;
    other.setFamilies({QLatin1String(family)});
    if (QFontDatabase::hasFamily(QLatin1String(family)) && DigitsHaveOneWidth(other)) return other;
  }
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(font.pointSizeF());
  return fixed;
}

}  // namespace ml::platform::ui
