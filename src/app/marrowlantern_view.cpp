#include "app/marrowlantern_view.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QMenu>

#include "app/command_actions.h"
#include "app/command_runner.h"
#include "app/control_column.h"
#include "app/double_click.h"
#include "app/histogram_display.h"
#include "app/image_texts.h"
#include "app/main_display.h"
#include "app/messages.h"
#include "app/navigation.h"
#include "app/picture_view.h"
#include "app/shooting_data_display.h"
#include "app/transfer_question.h"
#include "catalogue/ui/directory_drop.h"
#include "catalogue/ui/directory_tree.h"
#include "catalogue/ui/thumbnail_list_view.h"
#include "metadata/exif_text.h"
#include "options/engine_options.h"
#include "platform/text.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToQString;

}  // namespace

CMarrowlanternView::CMarrowlanternView(Session& session, QWidget* parent)
    : QWidget(parent),
      session_(session),
      panes_(session, *this),
      display_(new MainDisplay(session, *panes_.Picture(), this)),
      histograms_(new HistogramDisplay(session, *panes_.Controls(), this)),
      shootingData_(new ShootingDataDisplay(session, this)) {
  session_.SetObserver(this);
  ApplySettings();
  auto* thumbnails = panes_.Thumbnails();
  thumbnails->SetEmptyText(ToQString(kNoDirectoryYet));
  thumbnails->SetThumbnailSize(session_.ThumbnailEdge());
  thumbnails->SetDescriber([this](const std::string& path) { return ShortSummary(path); });
  panes_.Arrange();
  ConnectList();
  ConnectPicture();
  ConnectRest();
}

CMarrowlanternView::~CMarrowlanternView() {
  session_.SetObserver(nullptr);
  disconnect(qApp, nullptr, this, nullptr);  // the panes lose the focus as they go
}

void CMarrowlanternView::ApplySettings() {
  const auto& from = session_.settings.catalogue;
  panes_.Tree()->SetShowHidden(from.showHiddenDirectories != 0);
  panes_.Thumbnails()->SetColours(from.thumbnailBackgroundColour);
  panes_.Thumbnails()->SetTagOutline(from.outlineTaggedThumbnails);
}

void CMarrowlanternView::ConnectList() {
  using catalogue::ui::ThumbnailListView;
  connect(panes_.Thumbnails(), &ThumbnailListView::selectionEdited, this, &CMarrowlanternView::changed);
  connect(panes_.Thumbnails(), &ThumbnailListView::focusMoved, this,
          [this](int index) { GoTo(index, Reload::IfOther); });
  connect(panes_.Thumbnails(), &ThumbnailListView::imageActivated, this,
          [this] { Q_EMIT commandWanted(DoubleClickMeans()); });
  connect(panes_.Thumbnails(), &ThumbnailListView::moveWanted, this, &CMarrowlanternView::MoveSelectedTo);
  connect(panes_.Thumbnails(), &ThumbnailListView::tagToggled, this,
          [this] { Q_EMIT commandWanted(CommandId::TagImage); });
  connect(panes_.Thumbnails(), &ThumbnailListView::pathsDropped, this, &CMarrowlanternView::pathsDropped);
  connect(panes_.Thumbnails(), &ThumbnailListView::pixelRatioChanged, this, &CMarrowlanternView::ThumbnailSizeChanged);
}

void CMarrowlanternView::ConnectPicture() {
  connect(panes_.Picture(), &PictureView::colourUnderMouse, this, &CMarrowlanternView::colourUnderMouse);
  connect(panes_.Picture(), &PictureView::pathsDropped, this, &CMarrowlanternView::pathsDropped);
  connect(panes_.Picture(), &PictureView::wheelTurned, this, &CMarrowlanternView::TurnWheel);
  connect(panes_.Picture(), &PictureView::doubleClicked, this, &CMarrowlanternView::ActivatePicture);
  connect(panes_.Picture(), &PictureView::pixelSizeChanged, this,
          [this] { LoadImage(session_.list.currentIndex, Reload::Force); });
  connect(display_, &MainDisplay::shown, this, [this] {
    histograms_->Refresh();
    Q_EMIT changed();
  });
  connect(histograms_, &HistogramDisplay::changed, this, &CMarrowlanternView::changed);
  connect(shootingData_, &ShootingDataDisplay::changed, this, &CMarrowlanternView::changed);
  connect(this, &CMarrowlanternView::viewModeChanged, histograms_, &HistogramDisplay::ModeChanged);
}

void CMarrowlanternView::ConnectRest() {
  connect(panes_.Tree(), &catalogue::ui::DirectoryTree::directoryChosen, this, &CMarrowlanternView::directoryChosen);
  connect(panes_.Tree(), &catalogue::ui::DirectoryTree::filesDropped, this, &CMarrowlanternView::TakeDropped);
  connect(panes_.Controls(), &ControlColumn::tagToggled, this, [this] { Q_EMIT commandWanted(CommandId::TagImage); });
  connect(panes_.Controls(), &ControlColumn::imageChosen, this, [this](int index) { GoTo(index, Reload::IfOther); });
  // Some commands mean the tree while the keys go there.
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* from, const QWidget* to) {
    if (from == panes_.Tree() || to == panes_.Tree()) Q_EMIT changed();
  });
  // Queued: the tree moves in the middle of loading.
  connect(
      panes_.Tree()->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { Q_EMIT changed(); },
      Qt::QueuedConnection);
}

void CMarrowlanternView::SetActions(const CommandActions& actions) {
  panes_.Controls()->SetActions(actions.At(CommandId::PreviousImage), actions.At(CommandId::NextImage));
  const auto popUp = [this, &actions](const QPoint& where) {
    QMenu menu(this);
    actions.FillContextMenu(menu);
    menu.exec(where);
  };
  connect(panes_.Thumbnails(), &catalogue::ui::ThumbnailListView::contextMenuWanted, this, popUp);
  connect(panes_.Picture(), &PictureView::contextMenuWanted, this, popUp);
  connect(panes_.Tree(), &catalogue::ui::DirectoryTree::contextMenuWanted, this,
          [this, &actions](const QPoint& where) { PopUpTreeMenu(actions, where); });
}

void CMarrowlanternView::PopUpTreeMenu(const CommandActions& actions, const QPoint& where) {
  if (TreeDirectory().empty()) return;
  QMenu menu(this);
  auto* open = menu.addAction(QStringLiteral("&Open"), this, [this] { Q_EMIT directoryChosen(TreeDirectory()); });
  menu.setDefaultAction(open);
  Q_EMIT changed();  // the rules go by the directory that was clicked on
  actions.FillTreeMenu(menu);
  menu.exec(where);
}

void CMarrowlanternView::TakeDropped(const catalogue::ui::DroppedFiles& files) {
  const auto kind = files.kind ? files.kind : AskTransferKind(*this, files.position);
  if (kind) Q_EMIT transferWanted(*kind, files.directory, files.paths);
}

void CMarrowlanternView::SetViewMode(ViewMode mode) {
  const auto old = session_.mode;
  if (mode == old) return;
  session_.mode = mode;
  Q_EMIT colourUnderMouse({});
  if (IsFilmStrip(old) && IsFilmStrip(mode)) panes_.LimitPlaces();
  if (mode == ViewMode::Thumbnails) display_->Stop();
  // A pane that hides with the focus would hand it on as if by the Tab key.
  if (auto* focused = focusWidget(); focused && focused->hasFocus()) focused->clearFocus();
  panes_.Arrange();
  panes_.Apply();
  if (old == ViewMode::Main) {
    BringFocusToCurrent();
  } else if (old == ViewMode::Thumbnails) {
    LoadImage(session_.list.currentIndex, Reload::Force);
  }
  BringTargetIntoSight();
  // Once more when the panes have got their sizes, which they do with events that still come.
  QMetaObject::invokeMethod(this, &CMarrowlanternView::BringTargetIntoSight, Qt::QueuedConnection);
  FocusMainPane();
  Q_EMIT viewModeChanged(mode);
}

void CMarrowlanternView::BringTargetIntoSight() {
  if (session_.mode != ViewMode::Main) panes_.Thumbnails()->ScrollTo(session_.TargetIndex());
}

/// Coming from the picture, the list stands at the image that was on show. A selection of several images is
/// not given up for that.
void CMarrowlanternView::BringFocusToCurrent() {
  auto& list = session_.list;
  if (!list.ValidIndex(list.currentIndex)) return;
  if (list.SelectedCount() < 2) list.SelectOnly(list.currentIndex);
  list.focusIndex = list.currentIndex;
  panes_.Thumbnails()->MarksChanged();
  panes_.Thumbnails()->ScrollTo(list.currentIndex, QAbstractItemView::PositionAtTop);
}

void CMarrowlanternView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  panes_.Apply();
}

void CMarrowlanternView::AddPaneFacts(CommandState& state) const {
  state.treeHasFocus = panes_.Tree()->hasFocus();
  state.treeHasDirectory = !panes_.Tree()->Directory().empty();
  state.treeAtDriveRoot = panes_.Tree()->IsAtRoot();
}

/// What the settings want but this version does not have is the main view.
CommandId CMarrowlanternView::DoubleClickMeans() const {
  const auto id = DoubleClickCommand(session_.settings.catalogue.imageDclickAction, session_.mode);
  return HasHandler(id) ? id : CommandId::MainView;
}

/// The same as on a thumbnail; where that leads to what is on show already, back to the thumbnails.
void CMarrowlanternView::ActivatePicture() {
  const auto id = DoubleClickMeans();
  const bool stays = session_.mode == ViewMode::Main && id == CommandId::MainView;
  Q_EMIT commandWanted(stays ? CommandId::ThumbnailView : id);
}

void CMarrowlanternView::MoveSelectedTo(int position) {
  session_.Images().MoveSelectedTo(position);
  Q_EMIT changed();
}

/// For the tool tip.
std::string CMarrowlanternView::ShortSummary(const std::string& path) {
  const auto& shot = hovered_.Of(path, options::ExifOptionsOf(session_.settings));
  return platform::ToDisplayUtf8(metadata::GetShortSummaryText(shot, session_.locale));
}

void CMarrowlanternView::ThumbnailSizeChanged() {
  panes_.Thumbnails()->SetThumbnailSize(session_.ThumbnailEdge());
  session_.SetThumbnailScale(static_cast<double>(panes_.Thumbnails()->ThumbnailPixels()) / session_.ThumbnailEdge());
  panes_.Arrange();
  panes_.Apply();
}

void CMarrowlanternView::SettingsChanged() {
  ApplySettings();
  histograms_->Refresh();
}

void CMarrowlanternView::BlackAndWhiteChanged() {
  panes_.Thumbnails()->SetBlackAndWhite(session_.memory.blackAndWhite);
  if (session_.mode != ViewMode::Thumbnails) ReloadImage();
}

void CMarrowlanternView::ThumbnailReady(int index) {
  if (session_.mode != ViewMode::Main) panes_.Thumbnails()->ItemReady(index);
}

void CMarrowlanternView::Refresh() {
  const auto text = SummaryText(session_);
  panes_.Controls()->Refresh(session_.list, text);
  panes_.SetSummary(text);
  shootingData_->Refresh();
}

std::string CMarrowlanternView::TreeDirectory() const { return panes_.Tree()->Directory(); }

void CMarrowlanternView::MarksChanged() { panes_.Thumbnails()->MarksChanged(); }

std::string CMarrowlanternView::TopPath() const {
  const int top = panes_.Thumbnails()->TopVisibleIndex();
  return session_.list.ValidIndex(top) ? session_.list.files[static_cast<std::size_t>(top)] : std::string();
}

void CMarrowlanternView::ScrollToTop(const std::string& path) {
  panes_.Thumbnails()->ScrollTo(session_.list.IndexOfPath(path), QAbstractItemView::PositionAtTop);
}

void CMarrowlanternView::SelectInTree(const std::string& directory) { panes_.Tree()->Select(directory); }

void CMarrowlanternView::RefreshTree() { panes_.Tree()->Refresh(); }

void CMarrowlanternView::FocusList() {
  if (session_.mode != ViewMode::Main && !panes_.Thumbnails()->hasFocus()) panes_.Thumbnails()->setFocus();
}

void CMarrowlanternView::FocusMainPane() {
  session_.mode == ViewMode::Main ? panes_.Picture()->setFocus() : panes_.Thumbnails()->setFocus();
}

void CMarrowlanternView::TurnWheel(int notches, Qt::KeyboardModifiers modifiers) {
  if (session_.mode != ViewMode::Main) return;
  if (modifiers.testFlag(Qt::ControlModifier)) {
    Q_EMIT commandWanted(notches < 0 ? CommandId::RotateRight : CommandId::RotateLeft);
    return;
  }
  const auto& list = session_.list;
  const int step = WheelStep(notches, modifiers.testFlag(Qt::ShiftModifier));
  const int index = StepIndex(list.currentIndex, step, list.Count(), session_.settings.catalogue.wraparound != 0);
  if (index >= 0 && index != list.currentIndex) GoTo(index, Reload::Force);
}

void CMarrowlanternView::GoTo(int index, Reload reload) {
  LoadImage(index, reload);
  Q_EMIT changed();
}

void CMarrowlanternView::DirectoryShown(const std::string& directory) {
  panes_.Tree()->SetDirectory(directory);
  Q_EMIT directoryShown();
}

void CMarrowlanternView::ListReplaced() {
  panes_.Thumbnails()->SetEmptyText(ToQString(EmptyText(session_)));
  panes_.Thumbnails()->ListReplaced();
  display_->ForgetAll();
  panes_.Controls()->ListReplaced(session_.list);
}

void CMarrowlanternView::ListReordered() {
  panes_.Thumbnails()->ListReordered();
  panes_.Controls()->ListReplaced(session_.list);
}

void CMarrowlanternView::ShowImage(int index) { LoadImage(index, Reload::Force); }

void CMarrowlanternView::RecentDirectoriesChanged() { Q_EMIT recentDirectoriesChanged(); }

void CMarrowlanternView::LoadImage(int index, Reload reload) {
  auto& list = session_.list;
  if (list.Empty()) {
    list.SetCurrent(-1);
    display_->Clear(EmptyText(session_));
    return;
  }
  if (!list.ValidIndex(index)) return;
  if (session_.mode == ViewMode::Thumbnails) return list.SetCurrent(index);
  if (index == list.currentIndex && reload == Reload::IfOther) return;
  list.SetCurrent(index);
  display_->Show(index, panes_.ColumnWidth());
}

void CMarrowlanternView::ReloadImage() {
  display_->Forget(session_.list.currentPath);
  LoadImage(session_.list.currentIndex, Reload::Force);
}

}  // namespace ml::app
