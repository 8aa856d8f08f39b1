#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Texts are bytes. Old cameras and editors write Latin letters, everything newer writes UTF-8; what the
/// bytes are is only decided when they are shown.
namespace ml::platform {

/// The same bytes, which must live on, in the one type or the other.
std::string_view AsText(std::span<const std::byte> bytes);
std::span<const std::byte> AsBytes(std::string_view text);

bool IsValidUtf8(std::string_view bytes);

/// Valid UTF-8 for display: the bytes as they are if they are valid UTF-8, else read as Windows-1252.
std::string ToDisplayUtf8(std::string_view bytes);
/// The same for one line of text: control characters, which names may hold, become blanks.
std::string ToDisplayLine(std::string_view bytes);

/// One decoded character: its code point and how many bytes it took. A broken byte counts as one
/// character of one byte, with the byte's value.
struct CodePoint {
  char32_t value = 0;
  std::size_t length = 0;
  bool valid = false;
};
/// The character at `offset`, which must lie inside `bytes`.
CodePoint DecodeUtf8(std::string_view bytes, std::size_t offset);
void AppendUtf8(std::string& out, char32_t codePoint);

/// Number of characters as a user counts them.
std::size_t CodePointCount(std::string_view bytes);
/// The first `count` characters.
std::string_view FirstCodePoints(std::string_view bytes, std::size_t count);
/// As much of the front as fits into `maxBytes` without splitting a character.
std::string_view CutToBytes(std::string_view bytes, std::size_t maxBytes);

/// White space as in C's "C" locale taken off both ends.
std::string_view Trim(std::string_view text);
std::string_view TrimRight(std::string_view text);
/// Every occurrence of `from` (not empty) replaced, from left to right, never inside what was put in.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);
/// The lines of a text without their ends; LF and CRLF both end a line, a last line may lack its end.
std::vector<std::string_view> SplitLines(std::string_view text);

/// Upper-case hexadecimal digits, two a byte.
std::string ToHex(std::string_view bytes);
/// The bytes of an even number of hexadecimal digits in either case; false and `bytes` empty for anything else.
bool FromHex(std::string_view digits, std::string& bytes);

}  // namespace ml::platform
