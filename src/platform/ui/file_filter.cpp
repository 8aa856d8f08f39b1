#include "platform/ui/file_filter.h"

#include "platform/ui/qt_text.h"

namespace ml::platform::ui {
namespace {

QString AnyCase(const QString& pattern) {
  if (pattern == QLatin1String("*.*")) return QStringLiteral("*");
  QString result;
  for (const QChar c : pattern) {
    const QChar lower = c.toLower(), upper = c.toUpper();
    if (lower == upper) {
      result += c;
    } else {
      result += QLatin1Char('[') + lower + upper + QLatin1Char(']');
    }
  }
  return result;
}

QString WithoutPatterns(const QString& name) {
  const auto bracket = name.lastIndexOf(QLatin1Char('('));
  return bracket > 0 && name.indexOf(QLatin1Char('*'), bracket) > 0 ? name.left(bracket).trimmed() : name;
}

}  // namespace

QStringList NameFilters(std::string_view filter) {
  const auto parts = ToQString(filter).split(QLatin1Char('|'), Qt::SkipEmptyParts);
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QStringList patterns;
    for (const auto& pattern : parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
      patterns += AnyCase(pattern.trimmed());
    }
    filters += QStringLiteral("%1 (%2)").arg(WithoutPatterns(parts[i]), patterns.join(QLatin1Char(' ')));
  }
  return filters;
}

}  // namespace ml::platform::ui
