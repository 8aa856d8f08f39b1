#include "platform/xml_subset.h"

#include <algorithm>

#include "platform/numbers.h"
#include "platform/text.h"

namespace ml::platform {

namespace {

constexpr std::string_view kBlanks = "\n\r \t";
constexpr std::string_view kBeforeName = "\n\r \t<";

enum class Quotes { Protect, Ordinary };

/// Length of the tag at the front of `text` with its ">"; npos if it does not end.
std::size_t TagLength(std::string_view text, Quotes quotes) {
  if (quotes == Quotes::Ordinary) {
    const auto end = text.find('>');
    return end == std::string_view::npos ? end : end + 1;
  }
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') quoted = !quoted;
    if (text[i] == '>' && !quoted) return i + 1;
  }
  return std::string_view::npos;
}

bool ReadTag(std::string_view& text, std::string& tag, Quotes quotes) {
  text.remove_prefix(std::min(text.find('<'), text.size()));
  const auto length = TagLength(text, quotes);
  tag = text.substr(0, length);
  text.remove_prefix(tag.size());
  return length != std::string_view::npos;
}

bool IsLetterOrDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

void DropLeading(std::string& tag, std::string_view set) { tag.erase(0, tag.find_first_not_of(set)); }

/// Takes the longest front of `tag` whose characters all pass.
template <class Predicate>
std::string TakeWhile(std::string& tag, Predicate pass) {
  const auto end = std::ranges::find_if_not(tag, pass);
  std::string taken(tag.begin(), end);
  tag.erase(tag.begin(), end);
  return taken;
}

bool ReadElementValue(std::string_view& text, std::string& tag, std::string_view name, std::string& value,
                      Quotes quotes) {
  value.clear();
  DropLeading(tag, kBlanks);
  if (tag.starts_with("/>")) return true;
  if (!tag.starts_with(">")) return false;
  tag.erase(0, 1);
  value = TakeWhile(tag, [](char c) { return c != '<'; });
  if (tag.empty()) {
    value += text.substr(0, text.find('<'));
    ReadTag(text, tag, quotes);
  }
  value = ReplaceEntities(value);
  return tag == "</" + std::string(name) + ">";
}

}  // namespace

XmlFile::XmlFile(std::string_view bytes) : text_(ReplaceAll(bytes, "\r\n", "\n")) {}

bool ReadTagFromFile(XmlFile& file, std::string& tag) {
  auto rest = file.Rest();
  const bool complete = ReadTag(rest, tag, Quotes::Protect);
  file.Skip(file.Rest().size() - rest.size());
  return complete;
}

bool ReadTagFromString(std::string_view& text, std::string& tag) { return ReadTag(text, tag, Quotes::Ordinary); }

bool ParseTagName(std::string& tag, std::string& name) {
  DropLeading(tag, kBeforeName);
  const bool endTag = tag.starts_with("/");
  if (endTag) tag.erase(0, 1);
  name = TakeWhile(tag, [](char c) { return IsLetterOrDigit(c) || c == '/' || c == '_' || c == ':'; });
  if (endTag) name.insert(0, 1, '/');
  return !name.empty() && !tag.empty();
}

bool ParseAttribute(std::string& tag, std::string& attribute, std::string& value) {
  value.clear();
  DropLeading(tag, kBeforeName);
  attribute = TakeWhile(tag, IsLetterOrDigit);
  DropLeading(tag, kBlanks);
  if (!tag.starts_with("=")) return !attribute.empty();
  tag.erase(0, 1);
  DropLeading(tag, kBlanks);
  if (!tag.starts_with("\"")) return false;
  tag.erase(0, 1);
  value = ReplaceAll(TakeWhile(tag, [](char c) { return c != '"'; }), "&quot;", "\"");
  if (tag.empty()) return false;
  tag.erase(0, 1);
  return true;
}

std::string ReplaceEntities(std::string_view text) {
  std::string replaced(text);
  for (const auto& [entity, character] :
       {std::pair("&amp;", "&"), std::pair("&lt;", "<"), std::pair("&gt;", ">"), std::pair("&quot;", "\"")}) {
    replaced = ReplaceAll(replaced, entity, character);
  }
  return replaced;
}

bool ReadElementValueFromFile(XmlFile& file, std::string& tag, std::string_view name, std::string& value) {
  auto rest = file.Rest();
  const bool complete = ReadElementValue(rest, tag, name, value, Quotes::Protect);
  file.Skip(file.Rest().size() - rest.size());
  return complete;
}

bool ReadElementValueFromString(std::string_view& text, std::string& tag, std::string_view name, std::string& value) {
  return ReadElementValue(text, tag, name, value, Quotes::Ordinary);
}

void WriteElement(std::string& out, int depth, std::string_view name, std::string_view value) {
  out.append(static_cast<std::size_t>(depth), '\t').append("<").append(name);
  if (value.empty()) {
    out += " />\r\n";
    return;
  }
  auto escaped = ReplaceAll(value, "&", "&amp;");
  escaped = ReplaceAll(escaped, "<", "&lt;");
  escaped = ReplaceAll(escaped, ">", "&gt;");
  escaped = ReplaceAll(escaped, "\"", "&quot;");
  out.append(">").append(escaped).append("</").append(name).append(">\r\n");
}

void WriteElement(std::string& out, int depth, std::string_view name, int value) {
  WriteElement(out, depth, name, std::to_string(value));
}

void WriteElement(std::string& out, int depth, std::string_view name, double value) {
  WriteElement(out, depth, name, ShortNumber(value));
}

}  // namespace ml::platform
