#include "platform/locale_text.h"

#include <langinfo.h>
#include <locale.h>

#include <array>
#include <memory>
#include <type_traits>

#include "platform/text.h"

namespace ml::platform {

namespace {

using LocaleHandle = std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&::freelocale)>;

LocaleHandle OpenLocale(int mask, const char* name) {
  return {::newlocale(mask, name, static_cast<locale_t>(nullptr)), &::freelocale};
}

std::string FirstCharacterOr(const char* text, const std::string& fallback) {
  const std::string_view value = text == nullptr ? "" : text;
  return value.empty() ? fallback : std::string(FirstCodePoints(value, 1));
}

}  // namespace

LocaleText LocaleText::FromEnvironment() {
  LocaleText result;
  // The name "" makes newlocale look at the environment.
  if (const auto numeric = OpenLocale(LC_NUMERIC_MASK | LC_CTYPE_MASK, "")) {
    result.decimalSeparator = FirstCharacterOr(::nl_langinfo_l(RADIXCHAR, numeric.get()), result.decimalSeparator);
    result.thousandsSeparator = FirstCharacterOr(::nl_langinfo_l(THOUSEP, numeric.get()), result.thousandsSeparator);
  }
  if (OpenLocale(LC_TIME_MASK | LC_CTYPE_MASK, "")) result.timeLocale = "";
  return result;
}

std::string LocaleText::FormatTime(const std::tm& time, const char* format) const {
  std::array<char, 256> buffer{};
  const auto handle = OpenLocale(LC_TIME_MASK | LC_CTYPE_MASK, timeLocale.c_str());
  const auto length = handle ? ::strftime_l(buffer.data(), buffer.size(), format, &time, handle.get())
                             : std::strftime(buffer.data(), buffer.size(), format, &time);
  return {buffer.data(), length};
}

std::string LocaleText::LongDate(const std::tm& time) const { return FormatTime(time, "%A, %B %d, %Y"); }

}  // namespace ml::platform
