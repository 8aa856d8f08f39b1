#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace ml::test {

struct CliResult {
  int exitCode = -1;
  std::string output, errors;
};

/// Runs the command line as a process, with a home of its own.
class CliRunner {
 public:
  CliResult operator()(const std::vector<std::string>& arguments) const;
  /// Standard output goes to `path`, and is not in the result.
  CliResult PrintTo(const std::string& path, const std::vector<std::string>& arguments) const;
  /// Ctrl+C is pressed once `path` exists.
  CliResult InterruptAt(const std::string& path, const std::vector<std::string>& arguments) const;
  std::string SettingsFile() const { return home_ / ".config/Tarnwick/Marrowlantern/100.toml"; }

 private:
  CliResult Finish(int child) const;

  TempDir home_;
};

/// Runs of the command line over a directory of the test.
class CliTest : public testing::Test {
 protected:
  using json = nlohmann::json;

  /// What the command tells with --json.
  json Json(std::vector<std::string> arguments, int exitCode = 0);
  /// The names of the files in a directory, in order.
  static std::vector<std::string> FilesIn(const std::string& directory);

  CliRunner run;
  TempDir dir;
};

}  // namespace ml::test
