#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

/// The small reader and writer of all our own text formats: tags one after the other, no tree, no nesting, no
/// entities but the four named below. Readers loop over the tags, take those whose names they know and skip the
/// rest, so that files of later versions stay readable. Names are handed out as they are written; whether case
/// matters is the caller's decision.
namespace ml::platform {

/// The text of a file and how far it has been read. CRLF counts as LF.
class XmlFile {
 public:
  explicit XmlFile(std::string_view bytes);
  /// What has not been read yet.
  std::string_view Rest() const { return std::string_view(text_).substr(position_); }
  void Skip(std::size_t count) { position_ += count; }

 private:
  std::string text_;
  std::size_t position_ = 0;
};

/// Skips to the next "<" and puts all from there to the ">" that ends the tag into `tag`; a ">" between double
/// quotes does not end it. False if the end came before the closing ">".
bool ReadTagFromFile(XmlFile& file, std::string& tag);
/// The same over a text, of which `text` keeps what follows. Kept: quotes protect nothing here, because texts
/// with stray quotes are read this way.
bool ReadTagFromString(std::string_view& text, std::string& tag);

/// Takes the name off the front of `tag`: letters, digits, "/", "_", ":"; an end tag's name begins with "/".
/// False if there is no name or nothing follows it.
bool ParseTagName(std::string& tag, std::string& name);
/// Takes one attribute off the front of `tag`. An attribute without "=" is true with an empty value. In the
/// value &quot; stands for a double quote and nothing else is replaced. A value without quotes is false.
bool ParseAttribute(std::string& tag, std::string& attribute, std::string& value);

/// `text` with the characters for which the four named entities stand. Kept: "&amp;" is replaced first, so "&amp;lt;"
/// reads as "<"; files rely on it.
std::string ReplaceEntities(std::string_view text);

/// The text of the element `name`; `tag` is what ParseTagName left of its opening tag. False if another tag
/// than its end tag follows; `value` is set all the same. Entities are replaced.
bool ReadElementValueFromFile(XmlFile& file, std::string& tag, std::string_view name, std::string& value);
bool ReadElementValueFromString(std::string_view& text, std::string& tag, std::string_view name, std::string& value);

/// Appends one line: `depth` tabs, the element with its escaped value (`<name />` if it is empty) and CRLF.
void WriteElement(std::string& out, int depth, std::string_view name, std::string_view value);
inline void WriteElement(std::string& out, int depth, std::string_view name, const char* value) {
  WriteElement(out, depth, name, std::string_view(value));
}
void WriteElement(std::string& out, int depth, std::string_view name, int value);
/// With at most six significant digits.
void WriteElement(std::string& out, int depth, std::string_view name, double value);

}  // namespace ml::platform
