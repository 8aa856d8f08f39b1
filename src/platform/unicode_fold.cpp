#include "platform/unicode_fold.h"

#include <glib.h>

namespace ml::platform {

char32_t FoldCodePoint(char32_t codePoint) {
  // By way of the upper case, so that forms with only an upper-case partner (long s, final sigma) meet theirs.
  return g_unichar_tolower(g_unichar_toupper(codePoint));
}

}  // namespace ml::platform
