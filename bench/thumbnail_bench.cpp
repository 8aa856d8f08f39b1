// How long a thumbnail takes, beside the library's own scaled decoding of the same file. Aims: under 3 ms with
// an embedded thumbnail, without one at most 1.15 times the library.

#include <benchmark/benchmark.h>

#include "imagefiles/image_file.h"
#include "imagefiles/thumbnail_maker.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"
#include "whole_decode.h"

namespace {

using ml::imagefiles::MakeThumbnail;

/// Two files of 6 megapixels and about 1.5 MB.
struct Files {
  ml::test::TempDir dir;
  std::string plain = Write("plain.jpg", false);
  std::string withThumbnail = Write("exif.jpg", true);

  std::string Write(const char* name, bool thumbnail) const {
    return dir.Write(name, ml::test::MakePhoto({.width = 3072, .height = 2048, .quality = 91, .thumbnail = thumbnail}));
  }
};
const Files& TheFiles() {
  static const Files files;
  return files;
}

void EmbeddedThumbnail(benchmark::State& state) {
  const auto size = static_cast<int>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(MakeThumbnail(TheFiles().withThumbnail, size, {}));
}
BENCHMARK(EmbeddedThumbnail)->Arg(80)->Arg(160)->Unit(benchmark::kMillisecond);

void WholeFileThumbnail(benchmark::State& state) {
  const auto size = static_cast<int>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(MakeThumbnail(TheFiles().plain, size, {}));
}
BENCHMARK(WholeFileThumbnail)->Arg(80)->Arg(160)->Arg(240)->Unit(benchmark::kMillisecond);

void LibraryAlone(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(ml::bench::WholeDecode(TheFiles().plain, 8));
}
BENCHMARK(LibraryAlone)->Unit(benchmark::kMillisecond);

void DisplayPicture(benchmark::State& state) {
  const auto box = static_cast<int>(state.range(0));
  for (auto _ : state) {
    const auto file = ml::imagefiles::CreateImageFile(TheFiles().plain, {});
    benchmark::DoNotOptimize(file->GetBitmap({box, box}, {.highQuality = state.range(1) != 0}));
  }
}
BENCHMARK(DisplayPicture)->ArgsProduct({{1000, 1500, 4000}, {0, 1}})->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
