#include "metadata/exif_values.h"

#include <algorithm>
#include <array>
#include <limits>

#include "platform/paths.h"

namespace ml::metadata {
namespace {

constexpr std::uint32_t kInlineText = 4;  ///< a text of fewer bytes stands in the entry
constexpr std::size_t kCommentCode = 8;   ///< bytes that name the encoding of a comment

bool IsRational(const IfdEntry& entry) { return entry.Is(IfdType::Rational) || entry.Is(IfdType::SignedRational); }

/// Both types are taken as signed: an infinite distance, all bits set, then shows as below zero and not as a number.
std::optional<double> Quotient(ByteView bytes) {
  const auto numerator = static_cast<std::int32_t>(bytes.readLong(0));
  const auto denominator = static_cast<std::int32_t>(bytes.readLong(4));
  if (denominator == 0) return std::nullopt;
  return static_cast<double>(numerator) / denominator;
}

std::string_view UpToZero(std::string_view text) { return text.substr(0, text.find('\0')); }

bool Fits(ByteView block, const IfdEntry& entry) {
  return entry.value <= block.Size() && entry.count <= block.Size() - entry.value;
}

/// Where the data of an entry stand. Positions that do not fit into 31 bits cannot be sought in a smaller file.
std::uint64_t Seek(const ByteSource& file, const IfdEntry& entry, std::uint64_t base) {
  const auto position = base + entry.value;
  constexpr std::uint64_t kFarthest = std::numeric_limits<std::int32_t>::max();
  if (position > std::max(kFarthest, file.Size())) throw ExifException::OutOfBounds;
  return position;
}

/// The bytes of a text or comment, with whatever zeros it holds.
std::vector<std::byte> FileBytes(const ByteSource& file, const IfdEntry& entry, std::uint64_t base) {
  if (entry.count >= kInlineText) return file.ReadUpTo(Seek(file, entry, base), std::min(entry.count, kMaxFileText));
  std::vector<std::byte> bytes(entry.count);
  // Kept: low byte first in either byte order.
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::byte>(entry.value >> 8 * i & 0xff);
  return bytes;
}

/// Every second byte up to a zero, the first of each pair on little-endian text. In Latin text the other byte of each
/// pair is zero, which tells the two apart; without zeros it is no 16-bit text.
std::string LowBytes(std::string_view text) {
  std::array<int, 2> zeros{};
  for (std::size_t i = 0; i < text.size(); ++i) zeros[i % 2] += text[i] == '\0' ? 1 : 0;
  if (zeros[0] == 0 && zeros[1] == 0) return {};
  std::string low;
  for (std::size_t i = zeros[0] > zeros[1] ? 1 : 0; i < text.size() && text[i] != '\0'; i += 2) low += text[i];
  return low;
}

}  // namespace

std::optional<double> readRational(ByteView block, const IfdEntry& entry) {
  if (entry.count != 1 || !IsRational(entry)) return std::nullopt;
  if (entry.value > block.Size() || block.Size() - entry.value < 8) return std::nullopt;
  return Quotient(block.Sub(entry.value, 8));
}

std::string readASCII(ByteView block, const IfdEntry& entry) {
  if (!entry.Is(IfdType::Ascii) || !Fits(block, entry)) return {};
  return std::string(UpToZero(block.Text(entry.value, entry.count)));
}

std::string readUserComment(ByteView block, const IfdEntry& entry) {
  const bool known = entry.Is(IfdType::Ascii) || entry.Is(IfdType::Undefined);
  return known && Fits(block, entry) ? CommentText(block.Sub(entry.value, entry.count)) : std::string();
}

std::optional<double> readIFDrational(const ByteSource& file, ByteOrder order, const IfdEntry& entry,
                                      std::uint64_t base) {
  if (!IsRational(entry)) return std::nullopt;
  std::array<std::byte, 8> bytes{};
  if (file.ReadSome(Seek(file, entry, base), bytes) != bytes.size()) return std::nullopt;
  return Quotient(ByteView(bytes, order));
}

std::string readIFDstring(const ByteSource& file, const IfdEntry& entry, std::uint64_t base) {
  const auto bytes = FileBytes(file, entry, base);
  return std::string(UpToZero(ByteView(bytes, ByteOrder::Little).Text()));
}

std::string readIFDcomment(const ByteSource& file, const IfdEntry& entry, std::uint64_t base) {
  const auto bytes = FileBytes(file, entry, base);
  return CommentText(ByteView(bytes, ByteOrder::Little));
}

std::string CommentText(ByteView field) {
  const auto whole = field.Text();
  const bool hasCode = whole.size() > kCommentCode && whole[kCommentCode - 1] == '\0';
  if (!hasCode) return std::string(UpToZero(whole));
  const auto code = UpToZero(whole);
  const auto text = whole.substr(kCommentCode);
  if (platform::EqualsAsciiFolded(code, "UNICODE")) return LowBytes(text);
  if (platform::EqualsAsciiFolded(code, "JIS")) return {};
  const bool plain = code.empty() || platform::EqualsAsciiFolded(code, "ASCII");
  return std::string(UpToZero(plain ? text : whole));
}

}  // namespace ml::metadata
