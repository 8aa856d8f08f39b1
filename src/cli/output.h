#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ml::cli {

/// Keys stay in the order in which they were put in.
using Json = nlohmann::ordered_json;

/// A text for JSON: always valid UTF-8.
std::string JsonText(std::string_view bytes);
/// Puts `path` into `object` under `key`, and its bytes under `key` + "Hex" if they are not UTF-8.
void PutPath(Json& object, const std::string& key, std::string_view path);
/// Prints one document, two blanks a level, and a line end.
void PrintJson(const Json& document);
/// A text for a terminal: UTF-8, line ends as blanks, and "?" for other characters that would upset it.
std::string TerminalText(std::string_view text);
/// A line for people on standard output.
void PrintLine(std::string_view text);
/// One line on standard error: "marrowlantern-cli: " + text.
void Complain(std::string_view text);
/// Whether all that was printed has reached standard output; to be asked at the end.
bool AllPrinted();

/// Results name files as the user gave them, while the engine works with absolute paths.
class GivenPaths {
 public:
  /// The absolute path of `given`, which is remembered.
  std::string Add(const std::string& given);
  /// `absolute` as it was given, or below a directory as that was given; else as it is.
  std::string Of(const std::string& absolute) const;

 private:
  std::unordered_map<std::string, std::string> given_;
};

}  // namespace ml::cli
