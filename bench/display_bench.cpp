// How long the display waits for a picture: Next held down, and stepping. Aims, with 100 JPEGs of 12 megapixels and
// 3 MB in the page cache on two processors: held at 25 keys a second, 95 of 100 pictures within 60 ms of their key;
// the first one within 1.3 times a whole decode of it by the library; at 4 keys a second 95 of 100 within 25 ms.

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "imagefiles/display_limits.h"
#include "imagefiles/look_ahead.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"
#include "whole_decode.h"

namespace {

using ml::imagefiles::DisplayPicture;
using ml::imagefiles::LookAhead;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kFiles = 100, kViews = 4;

double Since(Clock::time_point start) { return Milliseconds(Clock::now() - start).count(); }

std::vector<std::string> WriteFiles(const ml::test::TempDir& dir) {
  std::vector<std::string> photos, paths;
  for (int i = 0; i < kViews; ++i) {
    photos.push_back(ml::test::MakePhoto({.width = 4000, .height = 3000, .seed = static_cast<unsigned>(i + 1)}));
    std::printf("a photo of %.1f MB\n", static_cast<double>(photos.back().size()) / 1e6);
  }
  for (int i = 0; i < kFiles; ++i) {
    paths.push_back(dir.Write("p" + std::to_string(i) + ".jpg", photos[static_cast<std::size_t>(i % kViews)]));
  }
  return paths;
}

/// The window's part: presses keys and notes when each picture came.
class Display {
 public:
  explicit Display(std::vector<std::string> paths, const ml::imagefiles::DisplayOptions& options)
      : paths_(std::move(paths)), options_(options), delays_(paths_.size(), -1) {}

  void Press(std::size_t index) {
    ml::imagefiles::PictureWish wish{.path = paths_[index], .neighbours = {}, .options = options_};
    for (std::size_t next = index + 1; next < std::min(index + 4, paths_.size()); ++next) {
      wish.neighbours.push_back(paths_[next]);
    }
    if (index > 0) wish.neighbours.push_back(paths_[index - 1]);
    {
      const std::lock_guard guard(lock_);
      pressTimes_.push_back(Clock::now());
    }
    const auto answer = look_.Want(std::move(wish));
    if (answer.picture) Take(answer.wish);
  }
  void WaitFor(std::size_t index) {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [&] { return delays_[index] >= 0; });
  }
  /// Milliseconds from a key to its picture; a picture that never came counts as endless.
  std::vector<double> Delays() {
    const std::lock_guard guard(lock_);
    auto result = delays_;
    for (auto& delay : result) delay = delay < 0 ? 1e9 : delay;
    return result;
  }

 private:
  /// Wishes count from 1, like keys.
  void Take(std::uint64_t wish) {
    const std::lock_guard guard(lock_);
    delays_[wish - 1] = Since(pressTimes_[wish - 1]);
    changed_.notify_all();
  }

  const std::vector<std::string> paths_;
  const ml::imagefiles::DisplayOptions options_;
  std::mutex lock_;
  std::condition_variable changed_;
  std::vector<double> delays_;
  std::vector<Clock::time_point> pressTimes_;
  LookAhead look_{[](const std::string& path, const ml::imagefiles::DisplayOptions& options) {
                    return ml::imagefiles::MakeDisplayPicture(path, options);
                  },
                  [this](std::uint64_t wish, const LookAhead::PicturePtr&) { Take(wish); },
                  static_cast<int>(std::thread::hardware_concurrency())};
};

void Tell(const char* what, std::vector<double> delays) {
  std::ranges::sort(delays);
  const auto at = [&](std::size_t percent) { return delays[delays.size() * percent / 100 - 1]; };
  std::printf("%-28s 50 %% %7.1f ms   90 %% %7.1f ms   95 %% %7.1f ms   100 %% %7.1f ms\n", what, at(50), at(90),
              at(95), at(100));
}

void Step(const char* what, const std::vector<std::string>& paths, const ml::imagefiles::DisplayOptions& options,
          std::chrono::milliseconds pace) {
  Display display(paths, options);
  const auto start = Clock::now();
  for (std::size_t i = 0; i < paths.size(); ++i) {
    std::this_thread::sleep_until(start + pace * static_cast<int>(i));
    display.Press(i);
  }
  display.WaitFor(paths.size() - 1);
  Tell(what, display.Delays());
}

void First(const std::vector<std::string>& paths, const ml::imagefiles::DisplayOptions& options) {
  std::vector<double> first, alone, whole;
  for (int i = 0; i < 9; ++i) {
    whole.push_back(ml::bench::WholeDecode(paths[0]));
    const auto start = Clock::now();
    ml::imagefiles::MakeDisplayPicture(paths[0], options);
    alone.push_back(Since(start));
    Display display(paths, options);
    display.Press(0);
    display.WaitFor(0);
    first.push_back(display.Delays()[0]);
  }
  for (auto* times : {&first, &alone, &whole}) std::ranges::sort(*times);
  std::printf("first picture %.1f ms, without neighbours %.1f ms, the library's whole decode %.1f ms: %.2f times\n",
              first[4], alone[4], whole[4], first[4] / whole[4]);
}

}  // namespace

/// ml_bench_display [WIDTH HEIGHT of the pane]
int main(int argc, char** argv) {
  const int width = argc > 2 ? std::atoi(argv[1]) : 980, height = argc > 2 ? std::atoi(argv[2]) : 800;
  const ml::test::TempDir dir;
  const auto paths = WriteFiles(dir);
  ml::imagefiles::DisplayOptions options;
  options.limits = ml::imagefiles::ApplyDisplayLimits({width, height, 291}, {});
  First(paths, options);
  Step("25 keys a second", paths, options, std::chrono::milliseconds(40));
  Step("4 keys a second", paths, options, std::chrono::milliseconds(250));
  options.quality.highQuality = true;
  Step("25 keys, high quality", paths, options, std::chrono::milliseconds(40));
  options.highlights.emplace();
  Step("25 keys, and highlights", paths, options, std::chrono::milliseconds(40));
}
