#include "platform/start_program.h"

#include <gio/gio.h>

#include <memory>

#include "platform/errors.h"
#include "platform/messages.h"

namespace ml::platform {

void StartProgram(const std::vector<std::string>& command) {
  struct ErrorDeleter {
    void operator()(GError* error) const { g_error_free(error); }
  };
  auto words = command;
  std::vector<gchar*> argv;
  for (auto& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  constexpr auto kFlags =
      static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
  GError* raw = nullptr;
  if (g_spawn_async(nullptr, argv.data(), nullptr, kFlags, nullptr, nullptr, nullptr, &raw) != FALSE) return;
  const std::unique_ptr<GError, ErrorDeleter> error(raw);
  throw UserError(messages::kUnableToStart + command.front() + "\n" + error->message);
}

}  // namespace ml::platform
