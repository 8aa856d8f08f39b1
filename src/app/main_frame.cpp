#include "app/main_frame.h"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QShowEvent>
#include <QStatusBar>
#include <QToolBar>
#include <algorithm>

#include "app/command_actions.h"
#include "app/image_texts.h"
#include "app/jobs/transfer_job.h"
#include "app/jobs/viewing_jpegs_job.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;

constexpr QSize kDefaultSize{1100, 760};
/// Title and edges are known only once the window shows.
constexpr QSize kRoomForFrame{8, 32};
constexpr int kPaneMargin = 4;
constexpr int kMadeTextMilliseconds = 150;
/// Part of the state of bars; raised when bars come or go, so that an older state is not taken.
constexpr int kStateVersion = 1;

QLabel* AddPane(QStatusBar& bar, const QString& name, int stretch) {
  auto* pane = new QLabel(&bar);
  pane->setAccessibleName(name);
  pane->setObjectName(name);
  pane->setTextFormat(Qt::PlainText);
  pane->setFont(platform::ui::WithTabularFigures(pane->font()));
  pane->setContentsMargins(kPaneMargin, 0, kPaneMargin, 0);
  // A long text is cut rather than widening the window.
  pane->setMinimumWidth(1);
  stretch > 0 ? bar.addWidget(pane, stretch) : bar.addPermanentWidget(pane);
  return pane;
}

/// Of the screens that a window at `rectangle` lies on; the first screen's if it lies on none.
QRect RoomFor(const QRect& rectangle) {
  QRect room;
  for (const auto* screen : QGuiApplication::screens()) {
    if (screen->availableGeometry().intersects(rectangle)) room |= screen->availableGeometry();
  }
  return room.isNull() ? QGuiApplication::primaryScreen()->availableGeometry() : room;
}

struct Span {
  int begin, length;
};

/// `wanted`, cut down and moved where it does not fit into `room` with its frame.
Span FittedInto(Span room, Span wanted, int frame) {
  const int length = std::min(wanted.length, room.length - frame);
  const int last = room.begin + room.length - length - frame;
  return {std::clamp(wanted.begin, room.begin, std::max(room.begin, last)), length};
}

/// The screen may be another one than last time.
QRect FittedInto(const QRect& room, const QRect& wanted) {
  const auto across = FittedInto({room.left(), room.width()}, {wanted.left(), wanted.width()}, kRoomForFrame.width());
  const auto down = FittedInto({room.top(), room.height()}, {wanted.top(), wanted.height()}, kRoomForFrame.height());
  return {across.begin, down.begin, across.length, down.length};
}

}  // namespace

CMainFrame::CMainFrame(Session& session)
    : session_(session), view_(new CMarrowlanternView(session, this)), actions_(new CommandActions(this)) {
  setObjectName(QStringLiteral("CMainFrame"));
  runner_ = std::make_unique<CommandRunner>(session_, *view_, *this);
  setCentralWidget(view_);
  view_->SetActions(*actions_);
  actions_->FillMenuBar(*menuBar());
  auto* bar = addToolBar(QStringLiteral("Tool Bar"));
  bar->setObjectName(QStringLiteral("ToolBar"));
  actions_->FillToolBar(*bar);
  actions_->ShowRecent(session_.settings.recentDirectories);
  MakeStatusBar();
  Connect();
  view_->ApplyLayout();
  UpdateAll();
}

/// The view outlives this part of the frame, and loses the focus on its way out.
CMainFrame::~CMainFrame() { disconnect(view_, nullptr, this, nullptr); }

void CMainFrame::MakeStatusBar() {
  text_ = AddPane(*statusBar(), QStringLiteral("Image"), 1);
  colour_ = AddPane(*statusBar(), QStringLiteral("Colour under the pointer"), 0);
  selection_ = AddPane(*statusBar(), QStringLiteral("Selection"), 0);
  made_ = AddPane(*statusBar(), QStringLiteral("Thumbnails made"), 0);
}

void CMainFrame::Connect() {
  connect(actions_, &CommandActions::triggered, this,
          [this](CommandId id, int argument) { runner_->Run(id, argument); });
  connect(view_, &CMarrowlanternView::commandWanted, this, [this](CommandId id) { runner_->Run(id); });
  connect(view_, &CMarrowlanternView::changed, this, &CMainFrame::UpdateState);
  connect(view_, &CMarrowlanternView::colourUnderMouse, colour_, &QLabel::setText);
  connect(view_, &CMarrowlanternView::recentDirectoriesChanged, this,
          [this] { actions_->ShowRecent(session_.settings.recentDirectories); });
  connect(view_, &CMarrowlanternView::directoryChosen, this, [this](const std::string& directory) {
    runner_->Do([&] { session_.Images().LoadDirectory(directory, ""); });
  });
  connect(
      view_, &CMarrowlanternView::directoryShown, this,
      [this] {
        runner_->Do([this] {
          CommandContext context{session_, *view_, *this};
          MakeMissingViewingJpegs(context);
        });
      },
      Qt::QueuedConnection);  // when the list is there too
  connect(view_, &CMarrowlanternView::pathsDropped, this,
          [this](const std::vector<std::string>& paths) { runner_->Do([&] { session_.Open(paths); }); });
  connect(view_, &CMarrowlanternView::transferWanted, this,
          [this](catalogue::TransferKind kind, const std::string& directory, const std::vector<std::string>& paths) {
            runner_->Do([&] {
              CommandContext context{session_, *view_, *this};
              TransferDropped(context, kind, directory, paths);
            });
          });
  auto* edit = actions_->MenuOf(Menu::Edit);
  connect(edit, &QMenu::aboutToShow, this, &CMainFrame::NameUndo);
  // The key works whatever the menu showed last.
  connect(edit, &QMenu::aboutToHide, this, [this] { actions_->At(CommandId::Undo)->setEnabled(true); });
  madeTimer_.setSingleShot(true);
  madeTimer_.setInterval(kMadeTextMilliseconds);
  connect(&madeTimer_, &QTimer::timeout, this, &CMainFrame::ShowMadeText);
}

/// The entry tells what it would take back.
void CMainFrame::NameUndo() {
  auto* undo = actions_->At(CommandId::Undo);
  std::vector<platform::JournalEntry> journal;
  runner_->Do([&] { journal = session_.Journal().Edits().List(); });
  undo->setEnabled(!journal.empty());
  auto text = ToQString(FindCommand(CommandId::Undo).text);
  if (!journal.empty()) text += QLatin1Char(' ') + ToQString(journal.front().what);
  undo->setText(text);
}

void CMainFrame::RestorePlace(const settings::WindowSettings& place) {
  QRect rectangle(pos(), kDefaultSize);
  if (place.left) rectangle.moveLeft(*place.left);
  if (place.top) rectangle.moveTop(*place.top);
  if (place.right && place.left) rectangle.setWidth(*place.right - *place.left);
  if (place.bottom && place.top) rectangle.setHeight(*place.bottom - *place.top);
  if (!rectangle.isValid()) rectangle.setSize(kDefaultSize);
  rectangle = FittedInto(RoomFor(rectangle), rectangle);
  resize(rectangle.size());
  if (place.left && place.top) move(rectangle.topLeft());
  if (!place.state.empty()) {
    restoreState(QByteArray(place.state.data(), static_cast<qsizetype>(place.state.size())), kStateVersion);
  }
  if (place.zoomed != 0) setWindowState(windowState() | Qt::WindowMaximized);
}

void CMainFrame::SavePlace(settings::WindowSettings& place) const {
  const bool zoomed = isMaximized();
  // A maximised window remembers where it comes back to.
  const QRect rectangle = zoomed && normalGeometry().isValid() ? normalGeometry() : QRect(pos(), size());
  place.left = rectangle.left();
  place.top = rectangle.top();
  place.right = rectangle.left() + rectangle.width();
  place.bottom = rectangle.top() + rectangle.height();
  place.zoomed = zoomed ? 1 : 0;
  place.state = saveState(kStateVersion).toStdString();
}

void CMainFrame::UpdateAll() {
  view_->MarksChanged();
  UpdateState();
}

void CMainFrame::UpdateState() {
  view_->Refresh();
  actions_->Update(session_.State());
  statusBar()->setVisible(session_.memory.statusBarShown);
  setWindowTitle(ToQString(TitleText(session_)));
  text_->setText(ToQString(StatusText(session_)));
  const bool thumbnails = session_.mode != ViewMode::Main;
  selection_->setText(thumbnails ? ToQString(catalogue::SelectionText(session_.list)) : QString());
  ShowMadeText();
}

void CMainFrame::ThumbnailReady(int index) {
  view_->ThumbnailReady(index);
  if (!madeTimer_.isActive()) madeTimer_.start();
}

void CMainFrame::ShowMadeText() { made_->setText(ToQString(ThumbnailsMadeText(session_))); }

void CMainFrame::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (!firstShow_) return;
  firstShow_ = false;
  // Not before the window stands on the screen.
  QMetaObject::invokeMethod(this, &CMainFrame::firstShown, Qt::QueuedConnection);
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  // A hidden window no longer knows its place.
  SavePlace(session_.settings.window);
  QMainWindow::closeEvent(event);
}

}  // namespace ml::app
