#include "cli/cli_run.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>

namespace ml::test {

namespace {

[[noreturn]] void RunChild(const std::vector<std::string>& arguments, const TempDir& home, const std::string& output) {
  ::setenv("HOME", home.Path().c_str(), 1);
  for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) ::unsetenv(variable);
  ::dup2(::open(output.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600), STDOUT_FILENO);
  ::dup2(::open((home / "err").c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600), STDERR_FILENO);
  std::string program = ML_CLI;
  std::vector<std::string> words = arguments;
  std::vector<char*> argv = {program.data()};
  for (auto& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  ::execv(program.c_str(), argv.data());
  ::_exit(127);
}

pid_t Start(const std::vector<std::string>& arguments, const TempDir& home, const std::string& output) {
  const pid_t child = ::fork();
  if (child == 0) RunChild(arguments, home, output);
  return child;
}

}  // namespace

CliResult CliRunner::operator()(const std::vector<std::string>& arguments) const {
  return Finish(Start(arguments, home_, home_ / "out"));
}

CliResult CliRunner::PrintTo(const std::string& path, const std::vector<std::string>& arguments) const {
  return Finish(Start(arguments, home_, path));
}

CliResult CliRunner::InterruptAt(const std::string& path, const std::vector<std::string>& arguments) const {
  const pid_t child = Start(arguments, home_, home_ / "out");
  siginfo_t ended{};
  while (::access(path.c_str(), F_OK) != 0 && ended.si_pid == 0) {
    ::usleep(1000);
    ::waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT);
  }
  ::kill(child, SIGINT);
  return Finish(child);
}

CliResult CliRunner::Finish(int child) const {
  int status = 0;
  ::waitpid(child, &status, 0);
  CliResult result;
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  result.output = ReadAll(home_ / "out").value_or("");
  result.errors = ReadAll(home_ / "err").value_or("");
  return result;
}

nlohmann::json CliTest::Json(std::vector<std::string> arguments, int exitCode) {
  arguments.push_back("--json");
  const auto result = run(arguments);
  EXPECT_EQ(result.exitCode, exitCode) << result.errors;
  return json::parse(result.output, nullptr, false);
}

std::vector<std::string> CliTest::FilesIn(const std::string& directory) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) names.push_back(entry.path().filename());
  std::ranges::sort(names);
  return names;
}

}  // namespace ml::test
