#include "app/application.h"

#include <QApplication>
#include <QSessionManager>
#include <clocale>
#include <cstdio>
#include <span>

#include "app/exit_signals.h"
#include "app/first_load.h"
#include "app/icons.h"
#include "app/main_frame.h"
#include "app/marrowlantern_view.h"
#include "app/messages.h"
#include "app/session.h"
#include "app/startup/affinity.h"
#include "app/startup/messages.h"
#include "app/startup/start_options.h"
#include "app/theme.h"
#include "app/thumbnail_relay.h"
#include "app/window_interaction.h"
#include "platform/errors.h"
#include "platform/read_directory.h"
#include "platform/start_recovery.h"
#include "settings/settings_store.h"

namespace ml::app {
namespace {

constexpr int kWrongUsage = 2;

void PrepareToolkit() {
  // The toolkit took the user's locale; numbers in files and texts are written and read in the "C" locale.
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName(QStringLiteral("Marrowlantern"));
  QApplication::setApplicationVersion(QStringLiteral(ML_VERSION));
  QApplication::setWindowIcon(ApplicationIcon());
  QApplication::setDesktopFileName(QStringLiteral("com.tarnwick.Marrowlantern"));
}

/// Options, with the boxes that belong to them. False if the program ends here.
bool ReadCommandLine(std::span<const char* const> arguments, platform::Interaction& ask, StartArguments& start) {
  start = ScanArguments(arguments, platform::Exists);
  if (start.options.usageRequested) {
    const auto usage = UsageBox();
    std::fprintf(stderr, "%s\n", usage.text.c_str());  // for who types in a terminal, and looks there
    ask.message(usage);
    return false;
  }
  if (const auto box = CheckScript(start.options, platform::Exists)) ask.message(*box);
  if (const auto box = ApplyProcessor(start.options.cpuPreference, SystemAffinity())) ask.message(*box);
  return true;
}

/// What a crash of an earlier run left half done, before anything else is written.
void FinishEarlierRuns(platform::Interaction& ask) {
  std::string text;
  for (const auto& sentence : platform::FinishEarlierRuns()) text += (text.empty() ? "" : "\n\n") + sentence;
  if (!text.empty()) ask.message({.text = text});
}

settings::Settings LoadSettings(settings::SettingsStore& store, platform::Interaction& ask) {
  std::string warning;
  auto settings = store.Load(&warning);
  if (!warning.empty()) ask.message({.text = warning, .icon = platform::BoxIcon::Warning});
  return settings;
}

/// Until it is done or given up: on a full disk the user can make room.
void SaveOrAsk(platform::Interaction& ask, const std::function<void()>& save) {
  for (;;) {
    try {
      return save();
    } catch (const platform::UserError& error) {
      const platform::MessageBox box{
          .text = TryAgain(error.what()), .icon = platform::BoxIcon::Error, .buttons = platform::Buttons::YesNo};
      if (ask.ask(box) != platform::Button::Yes) return;
    }
  }
}

void SaveEverything(Session& session, settings::SettingsStore& store) {
  SaveOrAsk(session.Ask(), [&] { session.Leave(); });
  SaveOrAsk(session.Ask(), [&] { store.Save(session.settings); });
}

/// The desktop ends, perhaps with us still running for a while: everything is saved, nobody is asked.
void SaveForSessionEnd(CMainFrame& frame, Session& session, settings::SettingsStore& store, WindowInteraction& ask) {
  ask.Silence(true);
  frame.SavePlace(session.settings.window);
  SaveEverything(session, store);
  session.Worker().Resume();
  ask.Silence(false);
}

}  // namespace

int RunApplication(int& argc, char** argv, const std::function<void(CMainFrame&, Session&)>& loaded) {
  QApplication application(argc, argv);
  PrepareToolkit();
  ApplyTheme(application);
  WindowInteraction ask;
  StartArguments start;
  const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
  if (!ReadCommandLine(arguments.subspan(arguments.empty() ? 0 : 1), ask, start)) return kWrongUsage;
  FinishEarlierRuns(ask);

  settings::SettingsStore store;
  ThumbnailRelay relay;
  Session session(LoadSettings(store, ask), ask, [&relay](int index) { Q_EMIT relay.ready(index); });
  CMainFrame frame(session);
  ask.SetParent(&frame);
  frame.RestorePlace(session.settings.window);
  QObject::connect(&relay, &ThumbnailRelay::ready, &frame, &CMainFrame::ThumbnailReady);
  QObject::connect(&frame, &CMainFrame::firstShown, &frame, [&] {
    frame.View().ThumbnailSizeChanged();  // now the screen is known
    frame.Runner().Do([&] { FirstLoad(session, start.tokens); });
    if (!session.list.Empty()) frame.View().FocusMainPane();
    if (loaded) loaded(frame, session);
  });
  QObject::connect(&application, &QGuiApplication::commitDataRequest, &frame,
                   [&] { SaveForSessionEnd(frame, session, store, ask); });
  const ExitSignals exitSignals([&ask] {
    ask.Silence(true);
    QCoreApplication::exit(0);
  });

  frame.show();
  const int code = QApplication::exec();
  if (frame.isVisible()) frame.SavePlace(session.settings.window);
  SaveEverything(session, store);
  return code;
}

}  // namespace ml::app
