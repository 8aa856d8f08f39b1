// The slideshow over 50 JPEG files of 12 megapixels, as seen on the screen: the time from picture to picture at an
// interval of one second, blank frames, and how soon Escape brings the window back, also while pictures are being made
// as fast as possible.
//   ml_bench_slideshow [DIRECTORY]
// makes the files in DIRECTORY, where they stay, or else for this run alone. Needs a display of its own, such as Xvfb:
// another process looks at the middle of the screen every few milliseconds.

#include <signal.h>
#include <unistd.h>

#include <QApplication>
#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "app/application.h"
#include "app/command_runner.h"
#include "app/main_frame.h"
#include "app/session.h"
#include "numbered_photos.h"
#include "support/temp_dir.h"
#include "window_runs.h"

namespace {

using namespace ml::bench;
using ml::app::CMainFrame;
using ml::app::CommandId;
using ml::app::Session;

constexpr int kFiles = 50, kEscapes = 10;
constexpr auto kLook = std::chrono::milliseconds(2);
constexpr int kInterval = 1000, kFast = 2500;
/// Before Escape, while pictures are still compared.
constexpr long long kMargin = 200'000'000;

constexpr int kBlank = -1, kOther = -2;

int NumberOnScreen(QScreen& screen) {
  const QPoint centre = screen.geometry().center();
  const QColor colour = screen.grabWindow(0, centre.x(), centre.y(), 1, 1).toImage().pixelColor(0, 0);
  if (colour.red() < 10 && colour.green() < 10 && colour.blue() < 10) return kBlank;
  return NumberOfMiddle(colour.red(), colour.green(), colour.blue()).value_or(kOther);
}

long long Now() { return Clock::now().time_since_epoch().count(); }

/// In a process of its own: prints time and number of what is seen whenever it changes, until it is killed.
int Watch(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  int last = kOther;
  while (::getppid() != 1) {
    const int number = NumberOnScreen(*QGuiApplication::primaryScreen());
    if (number != last) {
      std::printf("%lld %d\n", Now(), number);
      std::fflush(stdout);
    }
    last = number;
    std::this_thread::sleep_for(kLook);
  }
  return 0;
}

struct Sight {
  long long time = 0;
  int number = 0;
};

/// Starts the watcher; what it saw is read from its file.
class Watcher {
 public:
  explicit Watcher(const std::string& file) : file_(file) {
    const auto self = std::filesystem::read_symlink("/proc/self/exe").string();
    const auto command = "exec '" + self + "' --watch > '" + file + "'";
    child_ = ::fork();
    if (child_ == 0) {
      ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
      ::_exit(127);
    }
  }
  ~Watcher() { ::kill(child_, SIGKILL); }

  std::vector<Sight> Seen() const {
    std::ifstream in(file_);
    std::vector<Sight> seen;
    for (Sight sight; in >> sight.time >> sight.number;) seen.push_back(sight);
    return seen;
  }

 private:
  std::string file_;
  pid_t child_ = -1;
};

double Milliseconds(long long nanoseconds) { return static_cast<double>(nanoseconds) / 1e6; }

/// From the first picture of the show on; what was seen before is the main window and the black of the first moment.
void ReportSights(const std::vector<Sight>& seen, long long until) {
  int blank = 0, wrong = 0;
  std::optional<Sight> last;
  for (const auto& sight : seen) {
    if (sight.time > until) break;
    if (!last && sight.number != 0) continue;
    if (sight.number < 0) {
      ++blank;
      continue;
    }
    if (last) {
      Report("interval", Milliseconds(sight.time - last->time));
      Report("deviation", std::abs(Milliseconds(sight.time - last->time) - kInterval));
      if (sight.number != (last->number + 1) % kFiles) ++wrong;
    }
    last = sight;
  }
  Report("blank", blank);
  Report("wrong", wrong);
}

/// Runs the show; Escape is pressed after `milliseconds`. Gives the time until the command has ended, and from then on
/// the window answers again.
double RunShow(CMainFrame& frame, int milliseconds) {
  Clock::time_point due;
  std::jthread key([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    due = Clock::now();
    QMetaObject::invokeMethod(
        &frame,
        [] {
          if (auto* window = QApplication::activeModalWidget()) QTest::keyClick(window, Qt::Key_Escape);
        },
        Qt::QueuedConnection);
  });
  frame.Runner().Run(CommandId::Slideshow);
  QApplication::processEvents();
  return MillisecondsSince(due);
}

void MeasureAll(CMainFrame& frame, Session& session, const std::string& sights) {
  session.settings.slideshow.interval = 1;
  session.list.SelectOnly(0);
  session.list.focusIndex = 0;
  frame.showMaximized();
  if (!QTest::qWaitForWindowExposed(&frame)) throw std::runtime_error("the window does not show");
  const Watcher watcher(sights);
  QTest::qWait(1000);
  const auto end = Now() + static_cast<long long>(kFiles + 1) * kInterval * 1'000'000;
  Report("escape", RunShow(frame, (kFiles + 1) * kInterval));
  ReportSights(watcher.Seen(), end - kMargin);
  // A show begins with its interval; "as fast as possible" is picked then.
  for (int i = 0; i < kEscapes; ++i) {
    QTimer::singleShot(300, &frame, [] {
      if (auto* window = QApplication::activeModalWidget()) {
        QTest::keyClick(window, Qt::Key_F, Qt::ControlModifier);
      }
    });
    Report("fast-escape", RunShow(frame, kFast + 37 * i));
  }
  const auto seen = watcher.Seen();
  const auto begin = std::ranges::upper_bound(seen, end, {}, &Sight::time);
  const auto pictures = std::ranges::count_if(begin, seen.end(), [](const auto& sight) { return sight.number >= 0; });
  Report("fast-pictures", static_cast<double>(pictures) * 1000 / (kEscapes * (kFast - 300.0)));
  Report("peak-memory-MiB", MemoryMiB("VmHWM"));
}

int Measure(int argc, char** argv, const std::string& sights) {
  return ml::app::RunApplication(argc, argv, [&](CMainFrame& frame, Session& session) {
    QTimer::singleShot(0, &frame, [&frame, &session, sights] {
      MeasureAll(frame, session, sights);
      ReportQuit();
      QCoreApplication::exit(0);
    });
  });
}

constexpr Row kRows[] = {{"interval", "from picture to picture, ms", 0},
                         {"deviation", "  off the interval, ms", 50},
                         {"blank", "  blank frames", 0},
                         {"wrong", "  pictures out of order", 0},
                         {"escape", "Escape at one second, ms", 200},
                         {"fast-escape", "Escape as fast as possible, ms", 200},
                         {"fast-pictures", "  pictures a second", 0},
                         {"peak-memory-MiB", "  most memory, MiB", 0},
                         {"exit", "from quitting to the end, ms", 0}};

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc == 2 && std::string(argv[1]) == "--watch") return Watch(argc, argv);
    if (argc == 4 && std::string(argv[1]) == "--measure") {
      argv[1] = argv[0];
      int count = 2;
      return Measure(count, argv + 1, argv[3]);
    }
    const ml::test::TempDir own;
    UseFolder(own / "xdg");
    const std::string directory = argc > 1 ? argv[1] : own / "photos";
    if (!std::filesystem::exists(directory)) WriteNumberedPhotos(directory, kFiles, Previews::Without);
    Values all;
    AddRun({"--measure", directory, own / "sights"}, all);
    PrintTable(kRows, all);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ml_bench_slideshow: %s\n", error.what());
    return 1;
  }
}
