#pragma once

#include <ctime>
#include <string>

namespace ml::platform {

/// The few texts that follow the user's locale. One value is made at start and handed down; the rest of the
/// process stays in the "C" locale for numbers.
struct LocaleText {
  /// Each one whole character, which may have several bytes.
  std::string decimalSeparator = ".";
  std::string thousandsSeparator = ",";
  /// Name of the locale for month and day names, "C" for English.
  std::string timeLocale = "C";

  /// From LC_ALL, LC_NUMERIC, LC_TIME and LANG; what cannot be read keeps its default.
  static LocaleText FromEnvironment();

  /// strftime in the language of `timeLocale`.
  std::string FormatTime(const std::tm& time, const char* format) const;
  /// "Sunday, September 09, 2001"
  std::string LongDate(const std::tm& time) const;
};

}  // namespace ml::platform
