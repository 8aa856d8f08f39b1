#include <benchmark/benchmark.h>

#include <string>

#include "catalogue/catalogue.h"
#include "catalogue/direct_list_gate.h"
#include "catalogue/scan.h"
#include "support/fakes.h"
#include "support/temp_dir.h"

namespace {

using namespace ml::catalogue;

constexpr int kFileCount = 5000;

/// 5,000 JPEGs and as many sound notes, made once.
const std::string& Directory() {
  static const ml::test::TempDir dir;
  static const bool made = [] {
    for (int i = 0; i < kFileCount; ++i) {
      dir.Write("IMG_" + std::to_string(i) + ".JPG", "");
      dir.Write("IMG_" + std::to_string(i) + ".WAV", "");
    }
    return true;
  }();
  benchmark::DoNotOptimize(made);
  return dir.Path();
}

struct Silent final : CatalogueObserver {
  void DirectoryShown(const std::string&) override {}
  void DirectoryVisited(const std::string&) override {}
  void ListReplaced() override {}
  void ListReordered() override {}
  void ShowImage(int) override {}
};

void ScanDirectory5000(benchmark::State& state) {
  const auto& directory = Directory();
  for (auto _ : state) {
    LeftOut leftOut;
    benchmark::DoNotOptimize(ScanDirectory(directory, {}, leftOut));
  }
}
BENCHMARK(ScanDirectory5000)->Unit(benchmark::kMillisecond);

/// By sort method; a fresh catalogue each time, so that nothing is saved. The aim is 60 ms of processor time.
void LoadDirectory5000(benchmark::State& state) {
  const auto& directory = Directory();
  for (auto _ : state) {
    ImageList list;
    DirectListGate gate(list);
    ml::test::ScriptedInteraction ask;
    Silent observer;
    Catalogue catalogue(list, gate, ask, observer);
    list.sortMethod = static_cast<SortMethod>(state.range(0));
    catalogue.LoadDirectory(directory, {});
    if (list.Count() != kFileCount) state.SkipWithError("files are missing");
  }
}
BENCHMARK(LoadDirectory5000)->DenseRange(0, 3)->ArgName("method")->Unit(benchmark::kMillisecond);

/// The worst case of a reorder: each path is found by folded text only.
void Reorder5000(benchmark::State& state) {
  ImageList list;
  std::vector<std::string> files, wanted;
  for (int i = 0; i < kFileCount; ++i) {
    files.push_back("/pictures/IMG_" + std::to_string(i) + ".JPG");
    wanted.push_back("/pictures/img_" + std::to_string(kFileCount - i) + ".jpg");
  }
  list.Assign(files);
  for (auto _ : state) benchmark::DoNotOptimize(list.Reorder(wanted));
}
BENCHMARK(Reorder5000)->Unit(benchmark::kMillisecond);

}  // namespace
