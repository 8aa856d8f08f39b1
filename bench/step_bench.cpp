// From key to picture in the whole window: 100 JPEG files of 12 megapixels and 3 MB in the page cache, Next pressed 25
// and 4 times a second in the main view as soon as the directory is open, so that its thumbnails are made meanwhile and
// no picture was made ahead.
//   ml_bench_step [DIRECTORY]
// makes the files in DIRECTORY, where they stay, or else for this run alone. The first picture is measured against a
// whole decode by the library. A key is answered once its picture or a later one is painted.

#include <QApplication>
#include <QEvent>
#include <QImage>
#include <QPixmap>
#include <QTest>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "app/application.h"
#include "app/command_runner.h"
#include "app/main_frame.h"
#include "app/picture_view.h"
#include "app/session.h"
#include "numbered_photos.h"
#include "support/temp_dir.h"
#include "whole_decode.h"
#include "window_runs.h"

namespace {

using namespace ml::bench;
using ml::app::CMainFrame;
using ml::app::PictureView;
using ml::app::Session;

constexpr int kFiles = 100, kRuns = 3;
constexpr auto kTooLong = std::chrono::seconds(5);
constexpr auto kLook = std::chrono::milliseconds(2);

/// The number of the picture that the pane shows; nothing if it shows none.
std::optional<int> NumberOn(PictureView& pane) {
  const auto image = pane.grab(QRect(pane.rect().center(), QSize(1, 1))).toImage();
  const QColor colour = image.pixelColor(0, 0);
  return NumberOfMiddle(colour.red(), colour.green(), colour.blue());
}

/// Presses the keys of one run and notes when their pictures are painted.
class Stepper final : public QObject {
 public:
  Stepper(CMainFrame& frame, Session& session, std::string name, std::chrono::milliseconds pace)
      : QObject(&frame),
        frame_(frame),
        session_(session),
        pane_(*frame.findChild<PictureView*>()),
        name_(std::move(name)) {
    // The keys of commands only go to a window that has the focus.
    frame_.activateWindow();
    if (!QTest::qWaitForWindowActive(&frame_)) throw std::runtime_error("the window gets no focus");
    pane_.installEventFilter(this);
    due_[0] = Clock::now();
    frame_.Runner().Run(ml::app::CommandId::MainView);
    keys_ = std::jthread([this, pace](const std::stop_token& stop) { Press(pace, stop); });
  }

 private:
  /// The time counts from when a key is due, also if the window's thread is late to take it.
  void Press(std::chrono::milliseconds pace, const std::stop_token& stop) {
    const auto start = due_[0];
    for (int key = 1; key < kFiles && !stop.stop_requested(); ++key) {
      std::this_thread::sleep_until(start + key * pace);
      QMetaObject::invokeMethod(
          this,
          [this, key, due = Clock::now()] {
            due_[static_cast<std::size_t>(key)] = due;
            QTest::keyClick(&pane_, Qt::Key_Right);
          },
          Qt::QueuedConnection);
    }
    const auto last = Clock::now();
    while (!stop.stop_requested() && Clock::now() - last < kTooLong) std::this_thread::sleep_for(kLook);
    if (!stop.stop_requested())
      QMetaObject::invokeMethod(
          this, [this] { End(); }, Qt::QueuedConnection);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    // What is painted now is on the screen when the next event is handled.
    if (event->type() == QEvent::Paint && !looking_) {
      QMetaObject::invokeMethod(
          this, [this] { Painted(); }, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
  }

  void Painted() {
    looking_ = true;
    const auto number = NumberOn(pane_);
    looking_ = false;
    const auto now = Clock::now();
    if (!number) {
      if (answered_ > 0) ++blank_;
      return;
    }
    for (; answered_ <= *number && answered_ < kFiles; ++answered_) {
      const auto key = static_cast<std::size_t>(answered_);
      delays_[key] = std::chrono::duration<double, std::milli>(now - due_[key]).count();
    }
    if (answered_ == kFiles) End();
  }

  void End() {
    if (ended_) return;
    ended_ = true;
    keys_.request_stop();
    Report(name_ + "first", delays_[0]);
    std::vector<double> keys(delays_.begin() + 1, delays_.end());
    std::ranges::sort(keys);
    Report(name_ + "median", keys[keys.size() / 2]);
    Report(name_ + "95", keys[keys.size() * 95 / 100]);
    Report(name_ + "worst", keys.back());
    Report(name_ + "blank", blank_);
    Report(name_ + "thumbnails", session_.Worker().FinishedCount());
    Report(name_ + "peak-memory-MiB", MemoryMiB("VmHWM"));
    ReportQuit();
    QCoreApplication::exit(0);
  }

  CMainFrame& frame_;
  Session& session_;
  PictureView& pane_;
  const std::string name_;
  bool looking_ = false, ended_ = false;
  int answered_ = 0;  ///< keys, of which the first is the change to the main view
  int blank_ = 0;
  std::vector<Clock::time_point> due_{kFiles};
  /// Of a key that is never answered: as good as endless.
  std::vector<double> delays_ = std::vector<double>(kFiles, 1e6);
  std::jthread keys_;
};

int Measure(int argc, char** argv, const std::string& name, int pace) {
  return ml::app::RunApplication(argc, argv, [&](CMainFrame& frame, Session& session) {
    new Stepper(frame, session, name, std::chrono::milliseconds(pace));
  });
}

constexpr Row kRows[] = {{"decode", "whole decode by the library, ms", 0},
                         {"fast-first", "25 a second: first picture, ms", 0},
                         {"fast-median", "  half of the keys, ms", 0},
                         {"fast-95", "  95 of 100 keys, ms", 60},
                         {"fast-worst", "  all, ms", 0},
                         {"fast-blank", "  blank frames", 0},
                         {"fast-thumbnails", "  thumbnails made by then", 0},
                         {"fast-peak-memory-MiB", "  most memory, MiB", 0},
                         {"slow-first", "4 a second: first picture, ms", 0},
                         {"slow-median", "  half of the keys, ms", 0},
                         {"slow-95", "  95 of 100 keys, ms", 25},
                         {"slow-worst", "  all, ms", 0},
                         {"slow-blank", "  blank frames", 0},
                         {"slow-thumbnails", "  thumbnails made by then", 0},
                         {"slow-peak-memory-MiB", "  most memory, MiB", 0},
                         {"exit", "from quitting to the end, ms", 300}};

void RunAll(const std::string& directory, Previews previews) {
  if (!std::filesystem::exists(directory)) WriteNumberedPhotos(directory, kFiles, previews);
  const auto first = directory + "/IMG_0001.JPG";
  std::printf("%s previews in files of %.1f MB\n", previews == Previews::With ? "with" : "without",
              static_cast<double>(std::filesystem::file_size(first)) / 1e6);
  Values all;
  for (int run = 0; run < kRuns; ++run) {
    all["decode"].push_back(WholeDecode(first));
    AddRun({"--measure", directory, "fast-", "40"}, all);
    AddRun({"--measure", directory, "slow-", "250"}, all);
  }
  PrintTable(kRows, all);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc == 5 && std::string(argv[1]) == "--measure") {
      argv[1] = argv[0];
      int count = 2;
      return Measure(count, argv + 1, argv[3], std::stoi(argv[4]));
    }
    const ml::test::TempDir own;
    UseFolder(own / "xdg");
    const std::string directory = argc > 1 ? argv[1] : own / "photos";
    RunAll(directory + "/with", Previews::With);
    RunAll(directory + "/without", Previews::Without);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ml_bench_step: %s\n", error.what());
    return 1;
  }
}
