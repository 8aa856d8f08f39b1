#include "app/startup/start_options.h"

#include <charconv>

#include "app/startup/messages.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::app {

namespace {

constexpr int kHighestProcessor = 31;
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

/// Takes what stands in front of the first of `ends` off `text`.
std::string_view TakeUntil(std::string_view& text, std::string_view ends) {
  const auto taken = text.substr(0, text.find_first_of(ends));
  text.remove_prefix(taken.size());
  return taken;
}

std::string_view TakeDigits(std::string_view& text) {
  const auto taken = text.substr(0, text.find_first_not_of(kDigits));
  text.remove_prefix(taken.size());
  return taken;
}

void SkipBlanks(std::string_view& text) {
  const auto next = text.find_first_not_of(kBlanks);
  text.remove_prefix(next == std::string_view::npos ? text.size() : next);
}

/// Option letters in lower case; 0 at the end of the text.
char Letter(std::string_view text) { return text.empty() ? '\0' : platform::AsciiLower(text.substr(0, 1)).front(); }

void SetProcessor(std::string_view digits, StartOptions& options) {
  int number = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (result.ec == std::errc::result_out_of_range || number > kHighestProcessor) options.usageRequested = true;
  options.cpuPreference = number;
}

/// One argument that begins with the sign of an option; `next` is what follows it, or null. Returns how many
/// arguments were taken.
std::size_t TakeArgument(std::string_view argument, const char* next, StartOptions& options) {
  const char letter = Letter(argument.substr(1));
  std::string_view value = argument.substr(letter == '\0' ? 1 : 2);
  if (letter == 'a' && value.find_first_not_of(kDigits) == std::string_view::npos) {
    SetProcessor(value, options);
    return 1;
  }
  if (letter != 's') {
    options.usageRequested = true;
    return 1;
  }
  const bool apart = value.empty() && next != nullptr;
  options.scriptPath = apart ? next : value;
  return apart ? 2 : 1;
}

/// Whether an argument that begins with "/" has the form of an option; all others are paths.
bool HasSlashForm(std::string_view argument) {
  const char letter = Letter(argument.substr(1));
  if (letter == 's') return argument.size() == 2;
  return letter == 'a' && argument.find_first_not_of(kDigits, 2) == std::string_view::npos;
}

}  // namespace

StartLine ScanCommandLine(std::string_view commandLine) {
  StartLine line;
  SkipBlanks(commandLine);
  while (!commandLine.empty() && (commandLine.front() == '-' || commandLine.front() == '/')) {
    commandLine.remove_prefix(1);
    const char letter = Letter(commandLine);
    if (letter != 'a' && letter != 's') {
      line.options.usageRequested = true;
      return line;
    }
    commandLine.remove_prefix(1);
    if (letter == 'a') {
      SetProcessor(TakeDigits(commandLine), line.options);
      if (line.options.usageRequested) return line;
    } else {
      SkipBlanks(commandLine);
      line.options.scriptPath = TakeUntil(commandLine, kWhiteSpace);
    }
    SkipBlanks(commandLine);
  }
  line.rest = commandLine;
  return line;
}

std::vector<std::string> ScanTokens(std::string_view rest) {
  std::vector<std::string> tokens;
  while (true) {
    rest = platform::Trim(rest);
    const bool quoted = rest.starts_with('"');
    if (quoted) rest.remove_prefix(1);
    const auto end = rest.find(quoted ? '"' : ' ');
    if (quoted && end == std::string_view::npos) return tokens;
    const auto token = rest.substr(0, end);
    if (token.empty()) return tokens;
    tokens.emplace_back(token);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  }
}

StartArguments ScanArguments(std::span<const char* const> arguments,
                             const std::function<bool(const std::string&)>& fileExists) {
  StartArguments result;
  std::size_t i = 0;
  while (i < arguments.size()) {
    const std::string argument = arguments[i];
    const bool isOption =
        argument.starts_with('-') || (argument.starts_with('/') && HasSlashForm(argument) && !fileExists(argument));
    if (!isOption) break;
    i += TakeArgument(argument, i + 1 < arguments.size() ? arguments[i + 1] : nullptr, result.options);
    if (result.options.usageRequested) return result;
  }
  for (; i < arguments.size(); ++i) result.tokens.push_back(platform::AbsolutePath(arguments[i]));
  return result;
}

std::optional<platform::MessageBox> CheckScript(StartOptions& options,
                                                const std::function<bool(const std::string&)>& fileExists) {
  if (options.scriptPath.empty() || fileExists(options.scriptPath)) return std::nullopt;
  auto box = ScriptNotFoundBox(options.scriptPath);
  options.scriptPath.clear();
  return box;
}

}  // namespace ml::app
