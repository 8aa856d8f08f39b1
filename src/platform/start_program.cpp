#include "platform/start_program.h"

#include <gio/gio.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::platform {
namespace {

StartFailure FailureOf(const GError& error) {
  if (error.domain != G_SPAWN_ERROR) return StartFailure::Other;
  switch (error.code) {
    case G_SPAWN_ERROR_NOENT:
    case G_SPAWN_ERROR_NOTDIR:
      return StartFailure::NotFound;
    case G_SPAWN_ERROR_TOO_BIG:
      return StartFailure::TooManyArguments;
    case G_SPAWN_ERROR_NOEXEC:
    case G_SPAWN_ERROR_ACCES:
    case G_SPAWN_ERROR_ISDIR:
      return StartFailure::NotExecutable;
    case G_SPAWN_ERROR_NOMEM:
      return StartFailure::NoMemory;
    default:
      return StartFailure::Other;
  }
}

bool IsProgram(std::string_view name) {
  const std::unique_ptr<char, decltype(&g_free)> found(g_find_program_in_path(std::string(name).c_str()), g_free);
  return found != nullptr;
}

/// Where the program ends in a line that does not begin with a quote.
std::size_t EndOfProgram(std::string_view line) {
  constexpr std::string_view kExe = ".exe";
  if (IsProgram(line)) return line.size();
  const auto exe = AsciiLower(line).find(kExe);
  return exe == std::string::npos ? std::min(line.find(' '), line.size()) : exe + kExe.size();
}

std::size_t ClosingQuote(std::string_view line) {
  constexpr std::size_t kShortest = 3;
  const auto end = line.find('"', 1);
  if (end == std::string_view::npos || end - 1 < kShortest)
    throw UserError(messages::kNoClosingQuotes + std::string(line));
  return end;
}

}  // namespace

void StartProgram(const std::vector<std::string>& command) {
  struct ErrorDeleter {
    void operator()(GError* error) const { g_error_free(error); }
  };
  auto words = command;
  std::vector<gchar*> argv;
  argv.reserve(words.size() + 1);
  for (auto& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  constexpr auto kFlags =
      static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
  GError* raw = nullptr;
  if (g_spawn_async(nullptr, argv.data(), nullptr, kFlags, nullptr, nullptr, nullptr, &raw) != FALSE) return;
  const std::unique_ptr<GError, ErrorDeleter> error(raw);
  throw StartError(messages::kUnableToStart + command.front() + "\n" + error->message, FailureOf(*error),
                   error->message);
}

std::vector<std::string> SplitProgramLine(std::string_view line) {
  line = Trim(line);
  std::vector<std::string> words;
  if (line.starts_with('"')) {
    const auto end = ClosingQuote(line);
    words.emplace_back(line.substr(1, end - 1));
    line.remove_prefix(end + 1);
  } else {
    const auto end = EndOfProgram(line);
    words.emplace_back(line.substr(0, end));
    line.remove_prefix(end);
  }
  while (!(line = Trim(line)).empty()) {
    const auto end = std::min(line.find(' '), line.size());
    words.emplace_back(line.substr(0, end));
    line.remove_prefix(end);
  }
  return words;
}

}  // namespace ml::platform
