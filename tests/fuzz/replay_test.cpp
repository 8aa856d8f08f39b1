#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "support/temp_dir.h"

#define FUZZER(name) extern "C" int Fuzz_##name(const std::uint8_t* data, std::size_t size);
#include "fuzzer_list.inc"
#undef FUZZER

namespace ml {
namespace {

struct Fuzzer {
  std::string name;
  int (*run)(const std::uint8_t*, std::size_t);
};
#define FUZZER(name) {#name, Fuzz_##name},
const Fuzzer kFuzzers[] = {
#include "fuzzer_list.inc"
};
#undef FUZZER

std::vector<std::string> FilesBelow(const std::string& directory) {
  std::vector<std::string> paths;
  if (!std::filesystem::exists(directory)) return paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    if (entry.is_regular_file()) paths.push_back(entry.path().string());
  }
  std::ranges::sort(paths);
  return paths;
}

/// A copy of just its size: a sanitizer then sees a read behind the end.
std::vector<std::uint8_t> InputOf(const std::string& path) {
  const auto bytes = test::ReadAll(path);
  EXPECT_TRUE(bytes) << path;
  return bytes ? std::vector<std::uint8_t>(bytes->begin(), bytes->end()) : std::vector<std::uint8_t>();
}

/// What a fuzzer once found ends cleanly now.
TEST(FuzzFinds, EndCleanly) {
  for (const auto& fuzzer : kFuzzers) {
    for (const auto& path : FilesBelow(std::string(ML_SOURCE_DIR) + "/tests/data/fuzz/" + fuzzer.name)) {
      const auto input = InputOf(path);
      EXPECT_EQ(fuzzer.run(input.data(), input.size()), 0) << path;
    }
  }
}

/// A file may have any name, so every reader meets every format.
TEST(CameraFiles, EndCleanlyInEveryReader) {
  for (const auto& path : FilesBelow(test::SamplesDir().value_or("/nowhere"))) {
    const auto input = InputOf(path);
    for (const auto& fuzzer : kFuzzers) EXPECT_EQ(fuzzer.run(input.data(), input.size()), 0) << fuzzer.name << path;
  }
}

}  // namespace
}  // namespace ml
