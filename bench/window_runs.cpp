#include "window_runs.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace ml::bench {
namespace {

constexpr auto kStartVariable = "ML_BENCH_STARTED";
constexpr auto kQuit = "quit", kExit = "exit";

}  // namespace

double MillisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// The parent leaves the time at which it started this process; both have the same clock.
Clock::time_point ProcessStart() {
  const char* ticks = std::getenv(kStartVariable);
  return ticks ? Clock::time_point(Clock::duration(std::atoll(ticks))) : Clock::now();
}

void Report(const std::string& name, double value) { std::printf("%s %.1f\n", name.c_str(), value); }

void ReportQuit() { Report(kQuit, MillisecondsSince(ProcessStart())); }

double MemoryMiB(const std::string& row) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(row + ":")) return std::atof(line.c_str() + row.size() + 1) / 1024;
  }
  return 0;
}

void UseFolder(const std::string& folder) {
  for (const auto* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
    ::setenv(variable, folder.c_str(), 1);
  }
}

void AddRun(const std::vector<std::string>& arguments, Values& all) {
  std::string command = "exec '" + std::filesystem::read_symlink("/proc/self/exe").string() + "'";
  for (const auto& argument : arguments) command += " '" + argument + "'";
  const auto start = Clock::now();
  ::setenv(kStartVariable, std::to_string(start.time_since_epoch().count()).c_str(), 1);
  std::FILE* out = ::popen(command.c_str(), "r");
  if (!out) throw std::runtime_error("cannot start: " + command);
  char name[64];
  double value = 0;
  while (std::fscanf(out, "%63s %lf", name, &value) == 2) all[name].push_back(value);
  const int status = ::pclose(out);
  const double took = MillisecondsSince(start);
  for (const double quit : std::exchange(all[kQuit], {})) all[kExit].push_back(took - quit);
  if (status != 0) throw std::runtime_error("a run failed: " + command);
}

void PrintTable(std::span<const Row> rows, Values& all) {
  std::printf("%-36s %10s %10s %10s\n", "", "median", "worst", "aim");
  for (const auto& row : rows) {
    auto& values = all[row.name];
    if (values.empty()) throw std::runtime_error(std::string("nothing measured: ") + row.text);
    std::ranges::sort(values);
    std::printf("%-36s %10.1f %10.1f ", row.text, values[values.size() / 2], values.back());
    row.aim > 0 ? std::printf("%10.0f%s\n", row.aim, values.back() > row.aim ? "  missed" : "") : std::printf("\n");
  }
}

}  // namespace ml::bench
