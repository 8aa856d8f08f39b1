#include "platform/record_line.h"

#include <span>

#include "platform/content_hash.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace ml::platform {

namespace {

std::string Checksum(std::string_view text) { return std::to_string(HashOf(AsBytes(text))); }

/// Every field ends in a blank, the checksum of all that stands before it ends the line.
bool ReadLine(std::string_view line, std::vector<std::string>& fields) {
  const auto checksumStart = line.rfind(' ') + 1;  // 0 without a blank
  if (checksumStart == 0 || line.substr(checksumStart) != Checksum(line.substr(0, checksumStart))) return false;
  line = line.substr(0, checksumStart);
  while (!line.empty()) {
    const auto end = line.find(' ');
    if (!FromHex(line.substr(0, end), fields.emplace_back())) return false;
    line.remove_prefix(end + 1);
  }
  return true;
}

template <class Number>
bool ReadWholeNumber(std::string_view text, Number& value) {
  const auto number = WholeNumber<Number>(text);
  value = number.value_or(value);
  return number.has_value();
}

}  // namespace

std::string MakeRecordLine(const std::vector<std::string>& fields) {
  std::string line;
  for (const auto& field : fields) line.append(ToHex(field)).append(" ");
  return line.append(Checksum(line)).append("\n");
}

std::vector<std::vector<std::string>> ReadRecordLines(std::string_view text) {
  std::vector<std::vector<std::string>> lines;
  for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    if (!ReadLine(text.substr(0, end), lines.emplace_back())) {
      lines.pop_back();
      break;
    }
    text.remove_prefix(end + 1);
  }
  return lines;
}

bool ReadNumber(std::string_view text, std::uint64_t& value) { return ReadWholeNumber(text, value); }
bool ReadNumber(std::string_view text, std::int64_t& value) { return ReadWholeNumber(text, value); }

}  // namespace ml::platform
