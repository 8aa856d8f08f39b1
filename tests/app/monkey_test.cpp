// Random commands, keys, clicks and changes of files on the whole window, from a fixed seed. By itself for 20 seconds;
// $ML_MONKEY_SECONDS says how long, $ML_MONKEY_SEED begins elsewhere. After a crash the last deeds stand in the file
// that the first line of the output names.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDrag>
#include <QMessageBox>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <thread>

#include "app/application.h"
#include "app/command_actions.h"
#include "app/main_frame.h"
#include "app/monkey_files.h"
#include "app/picture_view.h"
#include "app/session.h"
#include "catalogue/ui/thumbnail_list_view.h"
#include "platform/worker_gate.h"
#include "support/temp_dir.h"

namespace ml::app {
namespace {

using catalogue::ThumbnailState;
using Clock = std::chrono::steady_clock;

constexpr int kAnswerMilliseconds = 10, kCheckEvery = 500;
/// Of processor time of the window's thread, so that a busy machine does not count.
constexpr double kLongestStepSeconds = 2;
/// Of wall time, for a step that waits for something that never comes.
constexpr auto kStuck = std::chrono::seconds(90);
constexpr long kAllowedGrowthKiB = 96L * 1024;

#ifdef __SANITIZE_ADDRESS__
constexpr bool kUnderSanitizer = true;
#else
constexpr bool kUnderSanitizer = false;
#endif

int Number(const char* variable, int otherwise) {
  const char* value = std::getenv(variable);
  return value ? std::atoi(value) : otherwise;
}

/// The files that the others work on have to stay as they are, the tree leads to the whole system, and nobody wants
/// browser and editor to open a hundred times.
constexpr CommandId kLeftOut[] = {CommandId::CopyToFolder,
                                  CommandId::MoveToFolder,
                                  CommandId::Delete,
                                  CommandId::DeletePermanently,
                                  CommandId::RenameImage,
                                  CommandId::BatchRename,
                                  CommandId::Timestamp,
                                  CommandId::AdjustDateTime,
                                  CommandId::Undo,
                                  CommandId::RotateLeft,
                                  CommandId::RotateRight,
                                  CommandId::AutoRotateJpegs,
                                  CommandId::EditImage,
                                  CommandId::PlayVideo,
                                  CommandId::PlaySound,
                                  CommandId::EditComments,
                                  CommandId::EditIptcData,
                                  CommandId::EmbedColorProfile,
                                  CommandId::RegenerateThumbnails,
                                  CommandId::RegenerateJpegs,
                                  CommandId::ConvertRawImage,
                                  CommandId::BatchConvert,
                                  CommandId::ExifCopy,
                                  CommandId::CopyExifFrom,
                                  CommandId::ExportExif,
                                  CommandId::ExtractJpegs,
                                  CommandId::Explore,
                                  CommandId::HelpContents};

double ThreadSeconds() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

long MemoryKiB() {
  std::ifstream statm("/proc/self/statm");
  long total = 0, resident = 0;
  statm >> total >> resident;
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

/// Ends the program with a message if the window's thread does not answer any more.
class Watchdog {
 public:
  void Alive() { ++beats_; }

 private:
  void Watch(const std::stop_token& stop) {
    auto since = Clock::now();
    for (long seen = -1; !stop.stop_requested(); std::this_thread::sleep_for(std::chrono::milliseconds(100))) {
      if (const long now = beats_; now != seen) {
        seen = now;
        since = Clock::now();
      } else if (Clock::now() - since > kStuck) {
        std::fputs("monkey: the window's thread is stuck\n", stderr);
        std::abort();
      }
    }
  }
  std::atomic<long> beats_ = 0;
  std::jthread thread_{[this](const std::stop_token& stop) { Watch(stop); }};
};

class Monkey {
 public:
  Monkey(CMainFrame& frame, Session& session, test::MonkeyFiles& files, unsigned seed, std::ofstream& log)
      : frame_(frame), session_(session), files_(files), random_(seed), log_(log) {
    QObject::connect(&answers_, &QTimer::timeout, &answers_, [this] { AnswerWhatAsks(); });
    answers_.start(kAnswerMilliseconds);
  }

  void Play(std::chrono::seconds duration) {
    const auto start = Clock::now();
    long warm = 0;
    for (int step = 0; Clock::now() - start < duration && !testing::Test::HasFailure(); ++step) {
      const double before = ThreadSeconds();
      Step();
      QApplication::processEvents(QEventLoop::AllEvents, 5);
      watchdog_.Alive();
      const double took = ThreadSeconds() - before;
      EXPECT_LT(took, kUnderSanitizer ? 10 * kLongestStepSeconds : kLongestStepSeconds) << last_;
      StayBelowRoot();
      CheckList();
      if (step % kCheckEvery == 0) CheckFiles();
      if (Clock::now() - start < duration / 3) warm = std::max(warm, MemoryKiB());
      steps_ = step;
    }
    CheckFiles();
    const long grown = MemoryKiB() - warm;
    if (!kUnderSanitizer) {
      EXPECT_LT(grown, kAllowedGrowthKiB) << "from " << warm << " KiB";
    }
    std::printf("monkey: %d steps, memory %ld KiB after a third, %ld KiB more at the end\n", steps_, warm, grown);
  }

 private:
  int Any(int count) { return count <= 0 ? 0 : static_cast<int>(random_() % static_cast<unsigned>(count)); }
  void Tell(const std::string& deed) { log_ << (last_ = deed) << std::endl; }

  void Step() {
    switch (Any(12)) {
      case 0:
      case 1:
      case 2:
      case 3:
        return RunCommand();
      case 4:
      case 5:
        return PressKey();
      case 6:
      case 7:
        return UseMouse();
      case 8:
        return TurnWheel();
      case 9:
        return Resize();
      case 10:
        return Tell(files_.ChangeSomething(random_));
      default:
        return OpenSomething();
    }
  }

  void RunCommand() {
    const auto all = Commands();
    const auto& row = all[static_cast<std::size_t>(Any(static_cast<int>(all.size())))];
    if (row.id == CommandId::Quit || std::ranges::count(kLeftOut, row.id) > 0) return;
    Tell("command " + std::string(row.text));
    if (row.id == CommandId::RecentDirectory) {
      const int count = static_cast<int>(session_.settings.recentDirectories.size());
      if (count > 0) frame_.Runner().Run(row.id, Any(count));
    } else {
      frame_.Actions().At(row.id)->trigger();
    }
  }

  /// The list or the picture. The tree of directories, which leads to the whole system, is left alone.
  QWidget* Pane() {
    QWidget* list = frame_.findChild<catalogue::ui::ThumbnailListView*>()->viewport();
    QWidget* picture = frame_.findChild<PictureView*>();
    return list->isVisible() && (!picture->isVisible() || Any(2) == 0) ? list : picture;
  }

  void PressKey() {
    static constexpr std::array kKeys = {
        Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home,
        Qt::Key_End,  Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, Qt::Key_1,      Qt::Key_2,        Qt::Key_3,
        Qt::Key_4,    Qt::Key_A,     Qt::Key_T,      Qt::Key_I,      Qt::Key_F5,     Qt::Key_F11,      Qt::Key_Plus};
    static constexpr std::array kModifiers = {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
    const auto key = kKeys[static_cast<std::size_t>(Any(kKeys.size()))];
    const auto modifiers = kModifiers[static_cast<std::size_t>(Any(kModifiers.size()))];
    // Turns the image.
    if (modifiers == Qt::ControlModifier && (key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_I)) return;
    auto* pane = Pane();
    auto* list = frame_.findChild<catalogue::ui::ThumbnailListView*>();
    Tell("key " + std::to_string(key) + " with " + std::to_string(static_cast<unsigned>(modifiers)));
    QTest::keyClick(pane == list->viewport() ? list : pane, key, modifiers);
  }

  void UseMouse() {
    auto* pane = Pane();
    const auto point = [&] { return QPoint(Any(pane->width()), Any(pane->height())); };
    const auto from = point(), to = point();
    const auto modifiers = Any(3) == 0 ? Qt::ControlModifier : Any(3) == 0 ? Qt::ShiftModifier : Qt::NoModifier;
    const int what = Any(4);
    Tell("mouse " + std::to_string(what) + " at " + std::to_string(from.x()) + " " + std::to_string(from.y()));
    if (what == 0) {
      QTest::mouseDClick(pane, Qt::LeftButton, modifiers, from);
    } else if (what == 1) {
      QTest::mousePress(pane, Qt::LeftButton, modifiers, from);
      QTest::mouseMove(pane, (from + to) / 2);
      QTest::mouseMove(pane, to);
      QTest::mouseRelease(pane, Qt::LeftButton, modifiers, to);
    } else if (what == 2) {
      QContextMenuEvent event(QContextMenuEvent::Mouse, from, pane->mapToGlobal(from));
      QApplication::sendEvent(pane, &event);
    } else {
      QTest::mouseClick(pane, Any(8) == 0 ? Qt::MiddleButton : Qt::LeftButton, modifiers, from);
    }
  }

  void TurnWheel() {
    auto* pane = Pane();
    const QPointF at(pane->rect().center());
    const auto modifiers = Any(3) == 0 ? Qt::ShiftModifier : Qt::NoModifier;  // with Control it turns images
    const int notches = Any(9) - 4;
    Tell("wheel " + std::to_string(notches));
    QWheelEvent event(at, pane->mapToGlobal(at), {}, QPoint(0, notches * 120), Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(pane, &event);
  }

  void Resize() {
    Tell("resize");
    frame_.resize(300 + Any(1200), 200 + Any(900));
  }

  void OpenSomething() {
    const auto& all = files_.Directories();
    if (Any(3) != 0) {
      const auto& directory = all[static_cast<std::size_t>(Any(static_cast<int>(all.size())))];
      Tell("open " + directory);
      return frame_.Runner().Do([&] { session_.Images().LoadDirectory(directory, ""); });
    }
    const std::vector<std::string> paths{files_.AnyFile(random_), files_.AnyFile(random_)};
    Tell("open files " + paths[0]);
    frame_.Runner().Do([&] { session_.Open(paths); });
  }

  /// A command may lead one directory up; from the top one the way goes back before the next.
  void StayBelowRoot() {
    const auto& directory = session_.Images().Directory();
    ASSERT_TRUE(directory.empty() || directory.starts_with(files_.Root())) << directory << " after " << last_;
    if (directory != files_.Root()) return;
    frame_.Runner().Do([&] { session_.Images().LoadDirectory(files_.Directories()[1], ""); });
  }

  void CheckList() {
    const auto& list = session_.list;
    ASSERT_EQ(list.files.size(), list.marks.size()) << last_;
    EXPECT_TRUE(list.focusIndex == -1 || list.ValidIndex(list.focusIndex)) << list.focusIndex << " after " << last_;
    EXPECT_TRUE(list.currentIndex == -1 || list.ValidIndex(list.currentIndex))
        << list.currentIndex << " after " << last_;
    if (list.ValidIndex(list.currentIndex)) {
      EXPECT_EQ(list.files[static_cast<std::size_t>(list.currentIndex)], list.currentPath) << last_;
    }
    EXPECT_EQ(frame_.findChild<catalogue::ui::ThumbnailListView*>()->model()->rowCount(), list.Count()) << last_;
    for (int i = 0; i < list.Count(); ++i) {
      if (session_.Worker().State(i) == ThumbnailState::ToDo) continue;
      EXPECT_EQ(session_.Worker().Item(i)->path, list.files[static_cast<std::size_t>(i)]) << last_;
    }
    // A thread publishes its record before it counts it.
    if (steps_ % kCheckEvery == 0) CheckCount();
  }

  void CheckCount() {
    const platform::PauseGuard pause(session_.Worker());
    int finished = 0;
    for (int i = 0; i < session_.list.Count(); ++i) finished += session_.Worker().State(i) != ThumbnailState::ToDo;
    EXPECT_EQ(finished, session_.Worker().FinishedCount()) << last_;
  }

  void CheckFiles() {
    for (const auto& path : files_.ChangedByOthers()) ADD_FAILURE() << "changed: " << path << " by then: " << last_;
  }

  void AnswerWhatAsks() {
    QDrag::cancel();
    if (auto* popup = QApplication::activePopupWidget()) {
      popup->close();
      return;
    }
    auto* asking = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(asking)) {
      const auto buttons = box->buttons();
      if (!buttons.isEmpty()) return buttons[Any(static_cast<int>(buttons.size()))]->click();
    }
    if (auto* dialog = qobject_cast<QDialog*>(asking)) dialog->reject();
  }

  CMainFrame& frame_;
  Session& session_;
  test::MonkeyFiles& files_;
  std::mt19937 random_;
  std::ofstream& log_;
  std::string last_;
  int steps_ = 0;
  QTimer answers_;
  Watchdog watchdog_;
};

TEST(Monkey, FindsNothing) {
  const test::TempDir home;
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  for (const auto* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"}) {
    ::setenv(variable, (home / "home").c_str(), 1);
  }
  const int seed = Number("ML_MONKEY_SEED", 1), seconds = Number("ML_MONKEY_SECONDS", 20);
  const auto logPath = home / "log";
  std::printf("monkey: seed %d, %d s, deeds in %s\n", seed, seconds, logPath.c_str());
  std::fflush(stdout);
  SCOPED_TRACE("ML_MONKEY_SEED=" + std::to_string(seed));
  test::MonkeyFiles files(home / "pictures");
  std::ofstream log(logPath);

  std::string name = "marrowlantern", directory = files.Directories()[0];
  std::array<char*, 3> argv{name.data(), directory.data(), nullptr};
  int argc = 2;
  const int code = RunApplication(argc, argv.data(), [&](CMainFrame& frame, Session& session) {
    Monkey(frame, session, files, static_cast<unsigned>(seed), log).Play(std::chrono::seconds(seconds));
    frame.Runner().Run(CommandId::Quit);
  });
  EXPECT_EQ(code, 0);
}

}  // namespace
}  // namespace ml::app
