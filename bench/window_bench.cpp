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
#include <filesystem>
#include <fstream>
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
#include "platform/dates.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"
#include "support/temp_dir.h"

namespace {

using Clock = std::chrono::steady_clock;
using ml::app::CMainFrame;
using ml::app::Session;
using ml::catalogue::ThumbnailState;
using ml::catalogue::ui::ThumbnailListView;

constexpr int kFiles = 1000, kRuns = 5;
constexpr int kWidth = 3072, kHeight = 2048, kQuality = 90;
constexpr int kPictures = 4;  ///< encoded ones; the files differ in their thumbnails and dates
constexpr auto kStartVariable = "ML_BENCH_STARTED";
constexpr auto kFrame = std::chrono::milliseconds(16);
constexpr auto kBeat = std::chrono::microseconds(500);

double MillisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// The parent leaves the time at which it started this process; both have the same clock.
Clock::time_point ProcessStart() {
  const char* ticks = std::getenv(kStartVariable);
  return ticks ? Clock::time_point(Clock::duration(std::atoll(ticks))) : Clock::now();
}

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
    char name[32];
    std::snprintf(name, sizeof name, "/IMG_%04d.JPG", i + 1);
    std::ofstream out(directory + name, std::ios::binary);
    out << ml::test::WithExif(pictures[static_cast<std::size_t>(i % kPictures)],
                              {.make = "Tarnwick",
                               .model = "Sample",
                               .dateTime = ml::platform::ExifDateText(morning + i * 60L),
                               .orientation = 1,
                               .thumbnail = ml::test::EncodeJpeg(thumbnail)});
    if (!out.flush()) throw std::runtime_error("cannot write " + directory + name);
  }
}

/// Kilobytes of this process in memory, a row of /proc.
double MemoryRow(const std::string& row) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(row + ":")) return std::atof(line.c_str() + row.size() + 1);
  }
  return 0;
}

/// Asks the window's thread again and again how soon it answers.
class Heartbeat {
 public:
  explicit Heartbeat(QObject* target) : thread_([this, target](const std::stop_token& stop) { Beat(target, stop); }) {}
  double LongestMilliseconds() const { return longest_; }

 private:
  void Beat(QObject* target, const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      // The answer may come when nobody waits for it any more.
      const auto beat = std::make_shared<std::atomic<double>>(0.0);
      const auto asked = Clock::now();
      QMetaObject::invokeMethod(target, [beat, asked] { *beat = MillisecondsSince(asked); });
      while (*beat == 0 && !stop.stop_requested()) std::this_thread::sleep_for(kBeat);
      longest_ = std::max(longest_.load(), beat->load());
    }
  }
  std::atomic<double> longest_ = 0;
  std::jthread thread_;
};

/// Goes through the stages of one run, each begun when the one before is painted.
class Watcher final : public QObject {
 public:
  Watcher(CMainFrame& frame, Session& session, Clock::time_point start)
      : QObject(&frame), session_(session), list_(*frame.findChild<ThumbnailListView*>()), stageStart_(start) {
    Report("loaded", MillisecondsSince(start));
    list_.viewport()->installEventFilter(this);
  }

 private:
  enum class Stage { Listed, FirstScreen, Middle, Scroll, All };

  static void Report(const char* what, double value) { std::printf("%s %.1f\n", what, value); }

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
    heartbeat_.emplace(this);
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this, bar, timer] {
      if (bar->value() < bar->maximum()) return bar->setValue(bar->value() + 3 * bar->singleStep());
      timer->stop();
      Report("longest-stall", heartbeat_->LongestMilliseconds());
      heartbeat_.reset();
      WaitForAll();
    });
    timer->start(kFrame);
  }

  void WaitForAll() {
    stage_ = Stage::All;
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this] {
      if (session_.Worker().FinishedCount() < session_.list.Count()) return;
      Report("memory-MiB", MemoryRow("VmRSS") / 1024);
      Report("peak-memory-MiB", MemoryRow("VmHWM") / 1024);
      QCoreApplication::exit(0);
    });
    timer->start(kFrame);
  }

  Session& session_;
  ThumbnailListView& list_;
  Stage stage_ = Stage::Listed;
  Clock::time_point stageStart_;
  std::optional<Heartbeat> heartbeat_;
};

int Measure(int argc, char** argv) {
  const auto start = ProcessStart();
  std::printf("main %.1f\n", MillisecondsSince(start));
  return ml::app::RunApplication(argc, argv,
                                 [&](CMainFrame& frame, Session& session) { new Watcher(frame, session, start); });
}

/// Name and value of each line that one run prints.
void AddRun(const std::string& program, const std::string& directory, std::map<std::string, std::vector<double>>& all) {
  ::setenv(kStartVariable, std::to_string(Clock::now().time_since_epoch().count()).c_str(), 1);
  std::FILE* out = ::popen(("exec '" + program + "' --measure '" + directory + "'").c_str(), "r");
  if (!out) throw std::runtime_error("cannot start " + program);
  char name[64];
  double value = 0;
  while (std::fscanf(out, "%63s %lf", name, &value) == 2) all[name].push_back(value);
  if (::pclose(out) != 0) throw std::runtime_error("a run failed");
}

struct Row {
  const char *name, *text;
  double aim;  ///< 0: none
};
constexpr Row kRows[] = {{"main", "main() entered, ms", 0},
                         {"loaded", "list in the window, ms", 0},
                         {"list-painted", "list painted, ms", 400},
                         {"first-screen", "then first screen, ms", 500},
                         {"middle", "jump to the middle, ms", 500},
                         {"longest-stall", "longest stall, ms", 30},
                         {"memory-MiB", "memory with all made, MiB", 0},
                         {"peak-memory-MiB", "most memory, MiB", 0}};

void PrintTable(std::map<std::string, std::vector<double>>& all) {
  std::printf("%-28s %10s %10s %10s\n", "", "median", "worst", "aim");
  for (const auto& row : kRows) {
    auto& values = all[row.name];
    if (values.empty()) throw std::runtime_error(std::string("nothing measured: ") + row.text);
    std::ranges::sort(values);
    std::printf("%-28s %10.1f %10.1f ", row.text, values[values.size() / 2], values.back());
    row.aim > 0 ? std::printf("%10.0f%s\n", row.aim, values.back() > row.aim ? "  missed" : "") : std::printf("\n");
  }
}

int RunAll(const std::string& program, std::optional<std::string> directory) {
  const ml::test::TempDir own;
  for (const auto* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
    ::setenv(variable, (own / "xdg").c_str(), 1);
  }
  if (!directory) directory = own / "photos";
  if (!std::filesystem::exists(*directory)) MakeFiles(*directory);
  std::map<std::string, std::vector<double>> all;
  for (int run = 0; run < kRuns; ++run) AddRun(program, *directory, all);
  PrintTable(all);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc == 3 && std::string(argv[1]) == "--measure") {
      argv[1] = argv[0];
      return Measure(argc - 1, argv + 1);
    }
    return RunAll(std::filesystem::read_symlink("/proc/self/exe"),
                  argc > 1 ? std::optional<std::string>(argv[1]) : std::nullopt);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ml_bench_window: %s\n", error.what());
    return 1;
  }
}
