// Draws the window as it looks after the start on the given names, without a display.
#include <sys/stat.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "app/application.h"
#include "app/main_display.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "options/engine_options.h"
#include "platform/data_folders.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace {

using ml::app::CMainFrame;
using ml::app::CommandId;
using ml::app::Session;

constexpr int kPollMilliseconds = 50;
constexpr int kPatienceMilliseconds = 300'000;

/// One picture after the other, as soon as all thumbnails are made.
class Photographer final : public QObject {
 public:
  Photographer(CMainFrame& frame, Session& session, std::string directory, int& exitCode)
      : QObject(&frame), frame_(frame), session_(session), directory_(std::move(directory)), exitCode_(exitCode) {
    patience_.start();
    connect(&timer_, &QTimer::timeout, this, [this] { Look(); });
    timer_.start(kPollMilliseconds);
  }

 private:
  void Look() {
    const bool made = session_.Worker().FinishedCount() == session_.list.Count();
    if (!made && patience_.elapsed() < kPatienceMilliseconds) return;
    timer_.stop();
    if (!made) std::fprintf(stderr, "marrowlantern-screens: not all thumbnails were made in time\n");
    exitCode_ = made ? 0 : 1;
    frame_.Runner().Run(CommandId::ThumbnailView);
    Take("thumbnail-view.png");
    frame_.Runner().Run(CommandId::MainView);
    Take("main-view.png");
    QCoreApplication::exit(0);
  }

  void Take(const std::string& name) {
    // What was asked for is laid out and painted by the event loop.
    do {
      for (int i = 0; i < 20; ++i) QApplication::processEvents(QEventLoop::AllEvents, kPollMilliseconds);
    } while (frame_.View().Display().Busy() && patience_.elapsed() < kPatienceMilliseconds);
    const auto path = ml::platform::JoinPath(directory_, name);
    if (frame_.grab().save(QString::fromLocal8Bit(path.c_str()), "PNG")) {
      std::printf("%s\n", path.c_str());
    } else {
      std::fprintf(stderr, "marrowlantern-screens: unable to write to file: %s\n", path.c_str());
      exitCode_ = 1;
    }
  }

  CMainFrame& frame_;
  Session& session_;
  std::string directory_;
  int& exitCode_;
  QTimer timer_;
  QElapsedTimer patience_;
};

}  // namespace

/// marrowlantern-screens DIRECTORY [the window program's arguments]
int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: marrowlantern-screens DIRECTORY [ARGUMENTS]\n");
    return 2;
  }
  const auto directory = ml::platform::AbsolutePath(argv[1]);
  try {
    ml::platform::ensureDirectory(directory);
  } catch (const ml::platform::UserError& error) {
    std::fprintf(stderr, "marrowlantern-screens: %s\n", error.what());
    return 1;
  }
  ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
  // The pictures depend on the arguments alone, and the user's own settings stay as they are.
  ::setenv("XDG_CONFIG_HOME", ml::platform::JoinPath(directory, ".config").c_str(), 1);
  std::vector<char*> arguments(argv, argv + argc);
  arguments.erase(arguments.begin() + 1);
  arguments.push_back(nullptr);
  int count = argc - 1;
  int exitCode = 1;
  const int code = ml::app::RunApplication(count, arguments.data(), [&](CMainFrame& frame, Session& session) {
    auto quiet = ml::options::CatalogueOptionsOf(session.settings);
    quiet.suppressOrderFile = true;  // looking leaves nothing behind
    session.Images().SetOptions(quiet);
    new Photographer(frame, session, directory, exitCode);
  });
  return code != 0 ? code : exitCode;
}
