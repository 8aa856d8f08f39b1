// How long the window lets a photographer wait, over 1,000 JPEG files of 6 megapixels with embedded thumbnails.
//   ml_bench_window [DIRECTORY]
// makes the files in DIRECTORY, where they stay, or else for this run alone; then starts the window five times on the
// display and prints medians and worst values. Aims: list painted 400 ms after the start of the process, the first
// screen of thumbnails 500 ms later, one in the middle 500 ms after the jump to it, and no stall above 30 ms.

#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "app/application.h"
#include "app/main_frame.h"
#include "app/session.h"
#include "catalogue/ui/thumbnail_list_view.h"
#include "numbered_photos.h"
#include "platform/dates.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"
#include "window_runs.h"

namespace {

using namespace ml::bench;
using ml::app::CMainFrame;
using ml::app::Session;
using ml::catalogue::ThumbnailState;
using ml::catalogue::ui::ThumbnailListView;

constexpr int kFiles = 1000, kRuns = 5;
constexpr int kWidth = 3072, kHeight = 2048, kQuality = 90;
constexpr int kPictures = 4;  ///< encoded ones; the files differ in their thumbnails and dates
constexpr auto kFrame = std::chrono::milliseconds(16);
constexpr auto kBeat = std::chrono::microseconds(500);

void MakeFiles(const std::string& directory) {
  std::filesystem::create_directories(directory);
  std::vector<std::string> pictures;
  for (int i = 0; i < kPictures; ++i) {
    const auto seed = static_cast<unsigned>(i);
    pictures.push_back(ml::test::EncodeJpeg(ml::test::PaintLandscape(kWidth, kHeight, seed), {.quality = kQuality}));
  }
  const auto morning = *ml::platform::ToTime(*ml::platform::ParseDateTime("2003:10:04 08:00:00"));
  for (int i = 0; i < kFiles; ++i) {
    const auto thumbnail = ml::test::PaintLandscape(160, 107, static_cast<unsigned>(i));
    WriteNumberedFile(directory, i,
                      ml::test::WithExif(pictures[static_cast<std::size_t>(i % kPictures)],
                                         {.make = "Tarnwick",
                                          .model = "Sample",
                                          .dateTime = ml::platform::ExifDateText(morning + i * 60L),
                                          .orientation = 1,
                                          .thumbnail = ml::test::EncodeJpeg(thumbnail)}));
  }
}

double ThreadMilliseconds() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Asks the window's thread again and again how soon it answers.
class Heartbeat {
 public:
  explicit Heartbeat(QObject* target) : thread_([this, target](const std::stop_token& stop) { Beat(target, stop); }) {}
  void Stop() {
    thread_.request_stop();
    thread_.join();
  }
  double LongestMilliseconds() const { return longest_; }
  /// The most processor time that the window's thread spent from one answer to the next: what remains of a stall
  /// when other programs leave the processors alone.
  double MostWork() const { return mostWork_; }

 private:
  void Beat(QObject* target, const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      // The answer may come when nobody waits for it any more.
      const auto beat = std::make_shared<std::atomic<double>>(0.0);
      const auto asked = Clock::now();
      QMetaObject::invokeMethod(target, [this, beat, asked] {
        Answer();
        *beat = MillisecondsSince(asked);
      });
      while (*beat == 0 && !stop.stop_requested()) std::this_thread::sleep_for(kBeat);
      longest_ = std::max(longest_.load(), beat->load());
    }
  }
  /// On the window's thread.
  void Answer() {
    const double now = ThreadMilliseconds();
    if (lastAnswer_ > 0) mostWork_ = std::max(mostWork_, now - lastAnswer_);
    lastAnswer_ = now;
  }

  double lastAnswer_ = 0, mostWork_ = 0;
  std::atomic<double> longest_ = 0;
  std::jthread thread_;
};

enum class Run {
  Usual,
  Cold,  ///< scrolls as soon as there is a list, while its thumbnails are made
};

/// Goes through the stages of one run, each begun when the one before is painted.
class Watcher final : public QObject {
 public:
  Watcher(CMainFrame& frame, Session& session, Run run)
      : QObject(&frame), session_(session), list_(*frame.findChild<ThumbnailListView*>()), run_(run) {
    if (run_ == Run::Usual) Report("loaded", MillisecondsSince(stageStart_));
    list_.viewport()->installEventFilter(this);
  }

 private:
  enum class Stage { Listed, FirstScreen, Middle, Scroll, All };

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      // What is painted now is on the screen when the next event is handled.
      const bool complete = VisibleFinished();
      QMetaObject::invokeMethod(
          this, [this, complete] { Painted(complete); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
  }

  bool VisibleFinished() const {
    const auto* model = list_.model();
    const int top = list_.TopVisibleIndex();
    if (top < 0) return false;
    for (int row = top; row < model->rowCount(); ++row) {
      if (!list_.visualRect(model->index(row, 0)).intersects(list_.viewport()->rect())) return true;
      if (session_.Worker().State(row) == ThumbnailState::ToDo) return false;
    }
    return true;
  }

  void Painted(bool complete) {
    if (stage_ == Stage::Listed) {
      if (run_ == Run::Cold) {
        Begin(Stage::Scroll);
        return Scroll();
      }
      Report("list-painted", MillisecondsSince(stageStart_));
      Begin(Stage::FirstScreen);
      list_.viewport()->update();  // it may be complete already
      return;
    }
    if (!complete) return;
    if (stage_ == Stage::FirstScreen) {
      Report("first-screen", MillisecondsSince(stageStart_));
      Begin(Stage::Middle);
      list_.verticalScrollBar()->setValue(list_.verticalScrollBar()->maximum() / 2);
    } else if (stage_ == Stage::Middle) {
      Report("middle", MillisecondsSince(stageStart_));
      Begin(Stage::Scroll);
      Scroll();
    }
  }

  void Begin(Stage stage) {
    stage_ = stage;
    stageStart_ = Clock::now();
  }

  void Scroll() {
    auto* bar = list_.verticalScrollBar();
    bar->setValue(0);
    const int finished = session_.Worker().FinishedCount();
    heartbeat_.emplace(this);
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this, bar, timer, finished] {
      if (bar->value() < bar->maximum()) return bar->setValue(bar->value() + 3 * bar->singleStep());
      timer->stop();
      const std::string cold = run_ == Run::Cold ? "cold-" : "";
      Report(cold + "longest-stall", heartbeat_->LongestMilliseconds());
      Report(cold + "most-work", heartbeat_->MostWork());
      Report(cold + "made-while-scrolling", session_.Worker().FinishedCount() - finished);
      heartbeat_->Stop();
      WaitForAll();
    });
    timer->start(kFrame);
  }

  void WaitForAll() {
    if (run_ == Run::Cold) return QCoreApplication::exit(0);
    stage_ = Stage::All;
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this] {
      if (session_.Worker().FinishedCount() < session_.list.Count()) return;
      Report("memory-MiB", MemoryMiB("VmRSS"));
      Report("peak-memory-MiB", MemoryMiB("VmHWM"));
      ReportQuit();
      QCoreApplication::exit(0);
    });
    timer->start(kFrame);
  }

  Session& session_;
  ThumbnailListView& list_;
  const Run run_;
  Stage stage_ = Stage::Listed;
  Clock::time_point stageStart_ = ProcessStart();
  std::optional<Heartbeat> heartbeat_;
};

int Measure(int argc, char** argv, Run run) {
  if (run == Run::Usual) Report("main", MillisecondsSince(ProcessStart()));
  return ml::app::RunApplication(argc, argv,
                                 [&](CMainFrame& frame, Session& session) { new Watcher(frame, session, run); });
}

constexpr Row kRows[] = {{"main", "main() entered, ms", 0},
                         {"loaded", "list in the window, ms", 0},
                         {"list-painted", "list painted, ms", 400},
                         {"first-screen", "then first screen, ms", 500},
                         {"middle", "jump to the middle, ms", 500},
                         {"longest-stall", "longest stall scrolling, ms", 30},
                         {"most-work", "  its own work in one go, ms", 0},
                         {"made-while-scrolling", "  thumbnails made meanwhile", 0},
                         {"cold-longest-stall", "the same from the start, ms", 30},
                         {"cold-most-work", "  its own work in one go, ms", 0},
                         {"cold-made-while-scrolling", "  thumbnails made meanwhile", 0},
                         {"memory-MiB", "memory with all made, MiB", 0},
                         {"peak-memory-MiB", "most memory, MiB", 0},
                         {"exit", "from quitting to the end, ms", 300}};

int RunAll(std::optional<std::string> directory) {
  const ml::test::TempDir own;
  UseFolder(own / "xdg");
  if (!directory) directory = own / "photos";
  if (!std::filesystem::exists(*directory)) MakeFiles(*directory);
  Values all;
  for (int run = 0; run < kRuns; ++run) {
    AddRun({"--measure", *directory}, all);
    AddRun({"--measure-cold", *directory}, all);
  }
  PrintTable(kRows, all);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::string first = argc > 1 ? argv[1] : "";
    if (argc == 3 && first.starts_with("--measure")) {
      argv[1] = argv[0];
      return Measure(argc - 1, argv + 1, first == "--measure" ? Run::Usual : Run::Cold);
    }
    return RunAll(argc > 1 ? std::optional(first) : std::nullopt);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ml_bench_window: %s\n", error.what());
    return 1;
  }
}
