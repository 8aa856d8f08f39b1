#include "metadata/xmp_scan.h"

#include <string_view>

namespace ml::metadata {
namespace {

constexpr std::size_t kLastOpening = 61'440;  ///< no "<" behind it is looked at
constexpr std::size_t kMaxPacket = 20'480;
constexpr std::string_view kOpening = "<?xpacket begin=";
constexpr std::string_view kQuotes = "'\"";

}  // namespace

std::vector<std::byte> FindXmpPacket(const ByteSource& file) {
  const auto head = file.ReadUpTo(0, kLastOpening + kMaxPacket);
  const auto text = ByteView(head, ByteOrder::Big).Text();
  const auto opening = text.find(kOpening);
  if (opening > kLastOpening) return {};  // also where there is none
  const auto behind = text.substr(opening + kOpening.size());
  if (behind.empty() || kQuotes.find(behind.front()) == std::string_view::npos) return {};
  const auto element = text.find('<', opening + kOpening.size());
  return element == std::string_view::npos ? std::vector<std::byte>() : file.ReadUpTo(element, kMaxPacket);
}

}  // namespace ml::metadata
