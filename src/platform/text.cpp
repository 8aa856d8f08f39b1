#include "platform/text.h"

#include <array>

namespace ml::platform {

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

/// Windows-1252, 0x80..0x9F; 0 where the code page has no character.
constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                   0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

unsigned char Byte(std::string_view bytes, std::size_t i) { return static_cast<unsigned char>(bytes[i]); }

}  // namespace

std::string_view AsText(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};  // char may alias everything
}

std::span<const std::byte> AsBytes(std::string_view text) { return std::as_bytes(std::span(text)); }

CodePoint DecodeUtf8(std::string_view bytes, std::size_t offset) {
  const auto lead = Byte(bytes, offset);
  const CodePoint broken{lead, 1, false};
  if (lead < 0x80) return {lead, 1, true};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() - offset < length) return broken;
  char32_t value = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = Byte(bytes, offset + i);
    if ((next & 0xC0) != 0x80) return broken;
    value = (value << 6) | (next & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (value < kSmallest[length] || value > 0x10FFFF || surrogate) return broken;
  return {value, length, true};
}

void AppendUtf8(std::string& out, char32_t c) {
  const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | c >> 6), put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | c >> 18), put(0x80 | (c >> 12 & 0x3F)), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
  }
}

bool IsValidUtf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const auto c = DecodeUtf8(bytes, i);
    if (!c.valid) return false;
    i += c.length;
  }
  return true;
}

std::string ToDisplayUtf8(std::string_view bytes) {
  if (IsValidUtf8(bytes)) return std::string(bytes);
  std::string out;
  out.reserve(bytes.size() * 2);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = Byte(bytes, i);
    const bool mapped = byte >= 0x80 && byte < 0xA0;
    const char32_t c = mapped ? kWindows1252[byte - 0x80U] : byte;
    AppendUtf8(out, mapped && c == 0 ? U'\uFFFD' : c);
  }
  return out;
}

std::string ToDisplayLine(std::string_view bytes) {
  const auto shown = ToDisplayUtf8(bytes);
  std::string line;
  line.reserve(shown.size());
  for (std::size_t i = 0; i < shown.size();) {
    const auto c = DecodeUtf8(shown, i);
    const bool control = c.value < 0x20 || (c.value >= 0x7F && c.value < 0xA0);
    line += control ? " " : shown.substr(i, c.length);
    i += c.length;
  }
  return line;
}

std::size_t CodePointCount(std::string_view bytes) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < bytes.size(); i += DecodeUtf8(bytes, i).length) ++count;
  return count;
}

std::string_view FirstCodePoints(std::string_view bytes, std::size_t count) {
  std::size_t end = 0;
  for (; count > 0 && end < bytes.size(); --count) end += DecodeUtf8(bytes, end).length;
  return bytes.substr(0, end);
}

std::string_view CutToBytes(std::string_view bytes, std::size_t maxBytes) {
  std::size_t end = 0;
  while (end < bytes.size()) {
    const auto length = DecodeUtf8(bytes, end).length;
    if (end + length > maxBytes) break;
    end += length;
  }
  return bytes.substr(0, end);
}

std::string_view TrimRight(std::string_view text) { return text.substr(0, text.find_last_not_of(kWhiteSpace) + 1); }

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(kWhiteSpace);
  return first == std::string_view::npos ? std::string_view() : TrimRight(text.substr(first));
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string out;
  std::size_t start = 0;
  for (auto hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, start)) {
    out.append(text.substr(start, hit - start)).append(to);
    start = hit + from.size();
  }
  return out.append(text.substr(start));
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const auto end = text.find('\n');
    auto line = text.substr(0, end);
    if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

std::string ToHex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string out;
  out.reserve(bytes.size() * 2);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    out += kDigits[Byte(bytes, i) >> 4];
    out += kDigits[Byte(bytes, i) & 15];
  }
  return out;
}

bool FromHex(std::string_view digits, std::string& bytes) {
  bytes.clear();
  const auto value = [](char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
  };
  if (digits.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const int high = value(digits[i]);
    const int low = value(digits[i + 1]);
    if (high < 0 || low < 0) return bytes.clear(), false;
    bytes += static_cast<char>(high << 4 | low);
  }
  return true;
}

}  // namespace ml::platform
