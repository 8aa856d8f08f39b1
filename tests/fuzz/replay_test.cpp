#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "support/small_files.h"
#include "support/temp_dir.h"
#include "support/truncation_sweep.h"

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

/// The targets behind which the readers, decoders and edits of a kind of file stand.
struct Kind {
  std::string_view extension;
  std::vector<std::string_view> targets;
};
const Kind kKinds[] = {
    {".jpg", {"exif", "jpeg", "iptc", "iptc_file", "xmp", "jpeg_edit"}},
    {".tif", {"exif", "tiff_facts", "tiff_raw", "uncompressed_tiff", "decode_magick", "tiff_edits"}},
    {".nef", {"exif", "tiff_raw", "decode_raw", "nef_raw"}},
    {".orf", {"exif", "tiff_raw", "decode_raw"}},
    {".pef", {"exif", "tiff_raw", "decode_raw"}},
    {".raf", {"exif", "tiff_raw", "decode_raw"}},
    {".mrw", {"exif", "tiff_raw", "decode_raw"}},
    {".crw", {"ciff", "decode_raw", "crw_edits"}},
    {".png", {"png", "iptc", "decode_png"}},
    {".psd", {"psd", "iptc", "decode_psd"}},
    {".jp2", {"exif", "jp2", "iptc", "xmp", "decode_jp2"}},
    {".avi", {"riff"}},
    {".gif", {"picture_size", "decode_magick"}},
    {".bmp", {"picture_size", "decode_magick"}},
};

class TruncatedFile : public testing::TestWithParam<test::SmallFile> {};

TEST_P(TruncatedFile, EndsCleanlyInItsReadersAtEveryLength) {
  const auto& [name, path, content] = GetParam();
  const auto kind = std::ranges::find_if(kKinds, [&](const auto& row) { return path.ends_with(row.extension); });
  ASSERT_NE(kind, std::end(kKinds)) << path;
  for (const auto target : kind->targets) {
    SCOPED_TRACE(target);
    const auto fuzzer = std::ranges::find(kFuzzers, target, &Fuzzer::name);
    ASSERT_NE(fuzzer, std::end(kFuzzers));
    test::SweepPrefixes(content, target == "decode_raw" ? test::kCoarse : 1, [&](const auto& prefix) {
      fuzzer->run(reinterpret_cast<const std::uint8_t*>(prefix.data()), prefix.size());
    });
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, TruncatedFile, testing::ValuesIn(test::SmallFiles()),
                         [](const auto& c) { return c.param.name; });

INSTANTIATE_TEST_SUITE_P(MakerNotes, TruncatedFile, testing::ValuesIn(test::MakerNoteFiles()),
                         [](const auto& c) { return c.param.name; });

/// A file may have any name, so every reader meets every format.
TEST(CameraFiles, EndCleanlyInEveryReader) {
  for (const auto& path : FilesBelow(test::SamplesDir().value_or("/nowhere"))) {
    const auto input = InputOf(path);
    for (const auto& fuzzer : kFuzzers) EXPECT_EQ(fuzzer.run(input.data(), input.size()), 0) << fuzzer.name << path;
  }
}

}  // namespace
}  // namespace ml
