#include "platform/ordered_replacements.h"

namespace ml::platform {

std::size_t CountOf(std::string_view token, std::string_view text) {
  std::size_t count = 0;
  for (auto hit = text.find(token); hit != std::string_view::npos; hit = text.find(token, hit + token.size())) ++count;
  return count;
}

}  // namespace ml::platform
