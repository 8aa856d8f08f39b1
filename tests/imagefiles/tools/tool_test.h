#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "imagefiles/edits/image_edits.h"
#include "imagefiles/tools/tool_run.h"
#include "support/fakes.h"
#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {

using test::Refusal;

/// A directory of files, and what the tools work with.
class ToolTest : public testing::Test {
 protected:
  std::string Write(const std::string& name, const std::string& content) { return dir_.Write(name, content); }
  std::string Content(const std::string& path) { return test::ReadAll(path).value_or("(missing)"); }
  metadata::ExifData Read(const std::string& path) { return metadata::ExifData(path, options_.ForExif()); }
  ToolRun Run(OnFailure onFailure = OnFailure::Stop) { return {.host = host_, .onFailure = onFailure}; }

  test::TempDir dir_;
  ImageFileOptions options_;
  CompanionFinder companions_{options_};
  EditTools tools_{options_, companions_, {.stateDirectory = dir_ / "state"}};
  test::ScriptedInteraction ask_;
  platform::NoProgress progress_;
  test::FakeClock clock_;
  platform::JobHost host_{ask_, progress_, clock_};
};

/// The results of a report, a letter each: D, S, K, F.
inline std::string Letters(const ToolReport& report) {
  std::string letters;
  for (const auto& item : report) letters += "DSKF"[static_cast<int>(item.result)];
  return letters;
}

}  // namespace ml::imagefiles
