// Draws the window in each of its modes and colours, started on the given names, without a display.
#include <sys/stat.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QScopedValueRollback>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/iptc_sheet.h"
#include "app/main_display.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "app/theme.h"
#include "catalogue/ui/thumbnail_list_view.h"
#include "metadata/iptc/iptc_fields.h"
#include "options/engine_options.h"
#include "platform/data_folders.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/ui/job_window.h"

namespace {

using ml::app::CMainFrame;
using ml::app::CommandId;
using ml::app::Session;

/// Of a screen of 1024 x 768.
constexpr int kTitleBar = 28;
constexpr int kPollMilliseconds = 50;
constexpr int kRestMilliseconds = 300;
/// A job shows its window after half a second.
constexpr int kDialogRests = 900;
constexpr int kPatienceMilliseconds = 300'000;

/// One picture: what is done before it is taken.
struct Shot {
  std::string name;
  ml::app::Scheme scheme;
  std::vector<CommandId> commands;
  std::string colours = "Gray";  ///< of the thumbnails
  bool dialog = false;           ///< the picture is of the dialog that the last command opens, where that is on
  int iptcPage = -1;             ///< of the sheet of IPTC data, which stands for the window then
};

/// The commands whose dialogs are drawn; none of them changes anything as long as nobody presses OK.
constexpr std::pair<const char*, CommandId> kDialogs[] = {
    {"batch-rename", CommandId::BatchRename},
    {"rename", CommandId::RenameImage},
    {"copy", CommandId::CopyToFolder},
    {"timestamp", CommandId::Timestamp},
    {"comments", CommandId::EditComments},
    {"dates", CommandId::AdjustDateTime},
    {"new-folder", CommandId::NewFolder},
    {"folder", CommandId::RenameFolder},
    {"properties", CommandId::DirectoryProperties},
    {"shortcuts", CommandId::KeyboardShortcuts},
    {"slideshow", CommandId::Slideshow},
    {"exif-copy", CommandId::ExifCopy},
    {"export", CommandId::ExportExif},
    {"extract", CommandId::ExtractJpegs},
    {"regenerate", CommandId::RegenerateJpegs},
    {"batch-convert", CommandId::BatchConvert},
};

std::vector<Shot> AllShots() {
  struct Size {
    const char* name;
    CommandId id;
  };
  constexpr Size kSizes[] = {{"small", CommandId::SmallThumbnails},
                             {"large", CommandId::LargeThumbnails},
                             {"extra-large", CommandId::ExtraLargeThumbnails}};
  std::vector<Shot> shots;
  for (const auto scheme : {ml::app::Scheme::Light, ml::app::Scheme::Dark}) {
    const std::string theme = scheme == ml::app::Scheme::Light ? "-light" : "-dark";
    for (const auto* colours : {"White", "Gray", "Black"}) {
      for (const auto& size : kSizes) {
        const auto name = "thumbnail-view" + theme + "-" + ml::platform::AsciiLower(colours) + "-" + size.name;
        shots.push_back({name, scheme, {CommandId::ThumbnailView, size.id}, colours});
      }
    }
    shots.push_back({"main-view" + theme, scheme, {CommandId::SmallThumbnails, CommandId::MainView}});
    shots.push_back({"full-view" + theme, scheme, {CommandId::MainView, CommandId::ShowControls}});
    shots.push_back({"film-strip-side" + theme, scheme, {CommandId::ShowControls, CommandId::FilmStripSide}});
    shots.push_back({"film-strip-collapsed" + theme, scheme, {CommandId::ShowExifData}});
    shots.push_back({"film-strip-below" + theme, scheme, {CommandId::ShowExifData, CommandId::FilmStripBelow}});
    shots.push_back({"film-strip-below-large" + theme, scheme, {CommandId::LargeThumbnails}});
    for (int page = 0; page < static_cast<int>(ml::metadata::kIptcPageTitles.size()); ++page) {
      const auto title = ml::platform::AsciiLower(ml::metadata::kIptcPageTitles[static_cast<std::size_t>(page)]);
      shots.push_back({.name = "iptc-" + title + theme, .scheme = scheme, .commands = {}, .iptcPage = page});
    }
    for (const auto& [name, id] : kDialogs) {
      shots.push_back({std::string("dialog-") + name + theme,
                       scheme,
                       {CommandId::ThumbnailView, CommandId::SelectAll, id},
                       "Gray",
                       true});
    }
    shots.push_back({"dialog-job" + theme, scheme, {}, "Gray", true});
  }
  return shots;
}

/// Takes one picture after the other, each as soon as all thumbnails are made.
class Photographer final : public QObject {
 public:
  Photographer(CMainFrame& frame, Session& session, std::string directory, int& exitCode)
      : QObject(&frame), frame_(frame), session_(session), directory_(std::move(directory)), exitCode_(exitCode) {
    frame_.resize(1024, 768 - kTitleBar);
    MarkSome();
    Prepare();
    connect(&timer_, &QTimer::timeout, this, [this] { Look(); });
    timer_.start(kPollMilliseconds);
  }

 private:
  /// So that each state of a thumbnail is on the pictures; taken back at the end.
  void MarkSome() {
    auto& list = session_.list;
    tagged_ = list.TaggedPaths();
    for (const int i : {1, 2, 6}) list.SetTag(i, true);
  }

  /// Before each picture: dialogs need all selected, and the slideshow goes elsewhere.
  void SelectSome() {
    auto& list = session_.list;
    list.SelectNone();
    for (int i = 2; i < std::min(list.Count(), 5); ++i) list.marks[static_cast<std::size_t>(i)].selected = true;
    list.focusIndex = std::min(3, list.Count() - 1);
    frame_.View().LoadImage(list.focusIndex, ml::app::Reload::IfOther);
  }

  void Prepare() {
    const auto& shot = shots_[next_];
    ml::app::ApplyTheme(*qApp, shot.scheme);
    frame_.findChild<ml::catalogue::ui::ThumbnailListView*>()->SetColours(shot.colours);
    SelectSome();
    frame_.View().MarksChanged();
    const auto here = shot.dialog && !shot.commands.empty() ? shot.commands.size() - 1 : shot.commands.size();
    for (std::size_t i = 0; i < here; ++i) frame_.Runner().Run(shot.commands[i]);
    if (shot.iptcPage >= 0) ShowSheet(shot.iptcPage);
    patience_.start();
  }

  void ShowSheet(int page) {
    sheet_ = ml::app::MakeIptcSheet(session_, frame_);
    if (!sheet_) return;
    sheet_->ShowPage(page);
    sheet_->show();
  }

  void Look() {
    const bool made = session_.Worker().FinishedCount() == session_.list.Count();
    if (busy_ || (!made && patience_.elapsed() < kPatienceMilliseconds)) return;
    const QScopedValueRollback guard(busy_, true);
    if (!made) {
      std::fprintf(stderr, "marrowlantern-screens: not all thumbnails were made in time\n");
      failed_ = true;
    }
    shots_[next_].dialog ? TakeDialog(shots_[next_]) : Take(shots_[next_].name + ".png");
    if (++next_ < shots_.size()) return Prepare();
    timer_.stop();
    session_.list.TagNone();
    for (const auto& path : tagged_) session_.list.SetTagByPath(path, true);
    exitCode_ = failed_ ? 1 : 0;
    QCoreApplication::exit(0);
  }

  /// Waits for the dialog, takes it and goes away again. Without a command it is that of a job.
  void TakeDialog(const Shot& shot) {
    QElapsedTimer open;
    open.start();
    QTimer look;
    std::atomic<bool> taken = false;
    connect(&look, &QTimer::timeout, this, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (taken || dialog == nullptr || open.elapsed() < kDialogRests) return;
      taken = true;
      Save(*dialog, shot.name + ".png");
      dialog->reject();
    });
    look.start(kPollMilliseconds);
    shot.commands.empty() ? ShowJob(taken) : frame_.Runner().Run(shot.commands.back());
    const bool off = !shot.commands.empty() && !ml::app::FindCommand(shot.commands.back()).enabled(session_.State());
    if (taken || off) return;
    std::fprintf(stderr, "marrowlantern-screens: no dialog: %s\n", shot.name.c_str());
    failed_ = true;
  }

  void ShowJob(const std::atomic<bool>& taken) {
    ml::platform::ui::RunJob(&frame_, {.title = QStringLiteral("Move Images")}, session_.Ask(),
                             [&](const ml::platform::JobHost& host, const std::stop_token& stop) {
                               host.progress.text("Moving image 42 of 128");
                               host.progress.percent(33);
                               while (!taken && !stop.stop_requested()) {
                                 std::this_thread::sleep_for(std::chrono::milliseconds(kPollMilliseconds));
                               }
                             });
  }

  void Take(const std::string& name) {
    // What was asked for is laid out and painted by the event loop, some of it only once things rest.
    QEventLoop rest;
    QTimer::singleShot(kRestMilliseconds, &rest, &QEventLoop::quit);
    rest.exec();
    while (frame_.View().Display().Busy() && patience_.elapsed() < kPatienceMilliseconds) {
      QApplication::processEvents(QEventLoop::AllEvents, kPollMilliseconds);
    }
    Save(frame_, name);
  }

  void Save(QWidget& widget, const std::string& name) {
    const auto path = ml::platform::JoinPath(directory_, name);
    QWidget& shown = sheet_ ? static_cast<QWidget&>(*sheet_) : widget;
    if (shown.grab().save(QString::fromLocal8Bit(path.c_str()), "PNG")) {
      std::printf("%s\n", path.c_str());
    } else {
      std::fprintf(stderr, "marrowlantern-screens: unable to write to file: %s\n", path.c_str());
      failed_ = true;
    }
    sheet_.reset();
  }

  CMainFrame& frame_;
  Session& session_;
  const std::vector<Shot> shots_ = AllShots();
  std::size_t next_ = 0;
  std::vector<std::string> tagged_;
  std::unique_ptr<ml::metadata::ui::CIptcPropertySheet> sheet_;
  std::string directory_;
  int& exitCode_;
  bool failed_ = false;
  bool busy_ = false;
  QTimer timer_;
  QElapsedTimer patience_;
};

}  // namespace

/// marrowlantern-screens DIRECTORY [the window program's arguments]
int main(int argc, char** argv) {
  if (argc < 2 || argv[1][0] == '-') {
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
