// How many thumbnails a second the worker makes of a directory, with a thread for each processor and with one alone:
// what a processor more is worth.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "catalogue/image_item_maker.h"
#include "catalogue/thumbnail_thread.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace {

using namespace ml;

constexpr int kFiles = 64;

/// Files of 6 megapixels, all of them names of the same one.
std::vector<std::string> WriteDirectory(const test::TempDir& dir, const std::string& name, bool thumbnail) {
  const auto photo = test::MakePhoto({.width = 3072, .height = 2048, .quality = 91, .thumbnail = thumbnail});
  std::vector<std::string> files{dir.Write(name + "/0.jpg", photo)};
  for (int i = 1; i < kFiles; ++i) {
    files.push_back(dir / (name + "/" + std::to_string(i) + ".jpg"));
    std::filesystem::create_hard_link(files.front(), files.back());
  }
  return files;
}

struct Directories {
  test::TempDir dir;
  std::vector<std::string> plain = WriteDirectory(dir, "plain", false);
  std::vector<std::string> withThumbnails = WriteDirectory(dir, "exif", true);
};
const Directories& TheDirectories() {
  static const Directories directories;
  return directories;
}

void MakeAll(benchmark::State& state, const std::vector<std::string>& files) {
  const auto size = static_cast<int>(state.range(0)), threads = static_cast<int>(state.range(1));
  for (auto _ : state) {
    catalogue::ImageList list;
    std::latch toDo(kFiles);
    catalogue::CThumbnailThread worker(
        list, catalogue::ImageItemMaker({}), [&](int) { toDo.count_down(); }, threads);
    worker.SetThumbnailSize(size);
    worker.LoadList(files);
    toDo.wait();
  }
  state.counters["files/s"] =
      benchmark::Counter(static_cast<double>(kFiles * state.iterations()), benchmark::Counter::kIsRate);
}

void EmbeddedThumbnails(benchmark::State& state) { MakeAll(state, TheDirectories().withThumbnails); }
void WholeFiles(benchmark::State& state) { MakeAll(state, TheDirectories().plain); }

void SizesAndThreads(benchmark::internal::Benchmark* bench, std::initializer_list<int> sizes) {
  const int processors = std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
  for (const int size : sizes) {
    bench->Args({size, 1});
    if (processors > 1) bench->Args({size, processors});
  }
}
BENCHMARK(EmbeddedThumbnails)->Apply([](auto* bench) {
  SizesAndThreads(bench, {80, 160});
}) -> ArgNames({"size", "threads"}) -> UseRealTime() -> Unit(benchmark::kMillisecond);
BENCHMARK(WholeFiles)->Apply([](auto* bench) {
  SizesAndThreads(bench, {160, 240});
}) -> ArgNames({"size", "threads"}) -> UseRealTime() -> Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
