#include "app/marrowlantern_view.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QMenu>
#include <QSplitter>

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
#include "app/summary_pane.h"
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

constexpr int kLeastLowerPane = 40;
constexpr int kTreeHeight = 440, kSummaryHeight = 220;

}  // namespace

CMarrowlanternView::CMarrowlanternView(Session& session, QWidget* parent)
    : QWidget(parent),
      session_(session),
      outer_(new QSplitter(Qt::Horizontal, this)),
      left_(new QSplitter(Qt::Vertical, outer_)),
      center_(new QSplitter(Qt::Horizontal, outer_)),
      tree_(new catalogue::ui::DirectoryTree(left_)),
      thumbnails_(new catalogue::ui::ThumbnailListView(session.list, session.Worker(), center_)),
      picture_(new PictureView(center_)),
      controls_(new ControlColumn(outer_)),
      summary_(new SummaryPane(left_)),
      film_(new QSplitter(Qt::Vertical, center_)),
      lower_(new SummaryPane(film_)),
      display_(new MainDisplay(session, *picture_, this)),
      histograms_(new HistogramDisplay(session, *controls_, this)),
      shootingData_(new ShootingDataDisplay(session, this)) {
  session_.SetObserver(this);
  MakePanes();
  ConnectList();
  ConnectPicture();
  ConnectRest();
}

CMarrowlanternView::~CMarrowlanternView() { session_.SetObserver(nullptr); }

void CMarrowlanternView::MakePanes() {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(outer_);
  film_->insertWidget(0, picture_);
  for (auto* splitter : {outer_, left_, center_, film_}) {
    splitter->setHandleWidth(kSplitterWidth);
    splitter->setChildrenCollapsible(false);
  }
  film_->setCollapsible(film_->indexOf(lower_), true);
  lower_->setAccessibleName(QStringLiteral("Shooting data"));
  lower_->setMinimumHeight(kLeastLowerPane);
  outer_->setStretchFactor(1, 1);
  center_->setStretchFactor(1, 1);
  left_->setMinimumWidth(kLeastPane);
  left_->setStretchFactor(0, 1);
  left_->setSizes({kTreeHeight, kSummaryHeight});
  controls_->setMinimumWidth(kLeastPane);

  ApplySettings();
  thumbnails_->SetEmptyText(ToQString(kNoDirectoryYet));
  thumbnails_->SetThumbnailSize(session_.ThumbnailEdge());
  thumbnails_->SetDescriber([this](const std::string& path) { return ShortSummary(path); });
  ArrangeFilmStrip();
}

void CMarrowlanternView::ApplySettings() {
  const auto& from = session_.settings.catalogue;
  tree_->SetShowHidden(from.showHiddenDirectories != 0);
  thumbnails_->SetColours(from.thumbnailBackgroundColour);
  thumbnails_->SetTagOutline(from.outlineTaggedThumbnails);
}

void CMarrowlanternView::ConnectList() {
  using catalogue::ui::ThumbnailListView;
  connect(thumbnails_, &ThumbnailListView::selectionEdited, this, &CMarrowlanternView::changed);
  connect(thumbnails_, &ThumbnailListView::focusMoved, this, [this](int index) { GoTo(index, Reload::IfOther); });
  connect(thumbnails_, &ThumbnailListView::imageActivated, this, &CMarrowlanternView::ActivateImage);
  connect(thumbnails_, &ThumbnailListView::moveWanted, this, &CMarrowlanternView::MoveSelectedTo);
  connect(thumbnails_, &ThumbnailListView::tagToggled, this, [this] { Q_EMIT commandWanted(CommandId::TagImage); });
  connect(thumbnails_, &ThumbnailListView::pathsDropped, this, &CMarrowlanternView::pathsDropped);
  connect(thumbnails_, &ThumbnailListView::pixelRatioChanged, this, &CMarrowlanternView::ThumbnailSizeChanged);
}

void CMarrowlanternView::ConnectPicture() {
  connect(picture_, &PictureView::colourUnderMouse, this, &CMarrowlanternView::colourUnderMouse);
  connect(picture_, &PictureView::pathsDropped, this, &CMarrowlanternView::pathsDropped);
  connect(picture_, &PictureView::wheelTurned, this, &CMarrowlanternView::TurnWheel);
  connect(picture_, &PictureView::doubleClicked, this, &CMarrowlanternView::ActivatePicture);
  connect(picture_, &PictureView::pixelSizeChanged, this,
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
  connect(tree_, &catalogue::ui::DirectoryTree::directoryChosen, this, &CMarrowlanternView::directoryChosen);
  connect(tree_, &catalogue::ui::DirectoryTree::filesDropped, this, &CMarrowlanternView::TakeDropped);
  connect(controls_, &ControlColumn::tagToggled, this, [this] { Q_EMIT commandWanted(CommandId::TagImage); });
  connect(controls_, &ControlColumn::imageChosen, this, [this](int index) { GoTo(index, Reload::IfOther); });
  for (auto* splitter : {outer_, center_, film_}) {
    connect(splitter, &QSplitter::splitterMoved, this, &CMarrowlanternView::TakePlaces);
  }
  // Some commands mean the tree while the keys go there.
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* from, const QWidget* to) {
    if (from == tree_ || to == tree_) Q_EMIT changed();
  });
  // Queued: the tree moves in the middle of loading.
  connect(
      tree_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { Q_EMIT changed(); },
      Qt::QueuedConnection);
}

void CMarrowlanternView::SetActions(const CommandActions& actions) {
  controls_->SetActions(actions.At(CommandId::PreviousImage), actions.At(CommandId::NextImage));
  const auto popUp = [this, &actions](const QPoint& where) {
    QMenu menu(this);
    actions.FillContextMenu(menu);
    menu.exec(where);
  };
  connect(thumbnails_, &catalogue::ui::ThumbnailListView::contextMenuWanted, this, popUp);
  connect(picture_, &PictureView::contextMenuWanted, this, popUp);
  connect(tree_, &catalogue::ui::DirectoryTree::contextMenuWanted, this,
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

/// Without a key that says which, the user is asked.
void CMarrowlanternView::TakeDropped(const catalogue::ui::DroppedFiles& files) {
  using catalogue::TransferKind;
  auto kind = files.kind;
  if (!kind) {
    QMenu menu(this);
    const auto* move = menu.addAction(QStringLiteral("&Move Here"));
    const auto* copy = menu.addAction(QStringLiteral("&Copy Here"));
    menu.addSeparator();
    menu.addAction(QStringLiteral("C&ancel"));
    const auto* chosen = menu.exec(files.position);
    if (chosen == move) kind = TransferKind::Move;
    if (chosen == copy) kind = TransferKind::Copy;
  }
  if (kind) Q_EMIT transferWanted(*kind, files.directory, files.paths);
}

void CMarrowlanternView::AddPaneFacts(CommandState& state) const {
  state.treeHasFocus = tree_->hasFocus();
  state.treeHasDirectory = !tree_->Directory().empty();
  state.treeAtDriveRoot = tree_->IsAtRoot();
}

/// What the settings want but this version does not have is the main view.
void CMarrowlanternView::ActivateImage() {
  const auto id = DoubleClickCommand(session_.settings.catalogue.imageDclickAction, session_.mode);
  Q_EMIT commandWanted(HasHandler(id) ? id : CommandId::MainView);
}

/// The same as on a thumbnail; where that leads to what is on show already, back to the thumbnails.
void CMarrowlanternView::ActivatePicture() {
  const auto id = DoubleClickCommand(session_.settings.catalogue.imageDclickAction, session_.mode);
  const bool stays = session_.mode == ViewMode::Main && (id == CommandId::MainView || !HasHandler(id));
  stays ? Q_EMIT commandWanted(CommandId::ThumbnailView) : ActivateImage();
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
  thumbnails_->SetThumbnailSize(session_.ThumbnailEdge());
  session_.SetThumbnailScale(static_cast<double>(thumbnails_->ThumbnailPixels()) / session_.ThumbnailEdge());
  ArrangeFilmStrip();
  ApplyLayout();
}

void CMarrowlanternView::SettingsChanged() {
  ApplySettings();
  histograms_->Refresh();
}

void CMarrowlanternView::BlackAndWhiteChanged() {
  thumbnails_->SetBlackAndWhite(session_.memory.blackAndWhite);
  if (session_.mode != ViewMode::Thumbnails) ReloadImage();
}

void CMarrowlanternView::ThumbnailReady(int index) {
  if (session_.mode != ViewMode::Main) thumbnails_->ItemReady(index);
}

void CMarrowlanternView::Refresh() {
  const auto text = SummaryText(session_);
  controls_->Refresh(session_.list, text);
  summary_->SetText(text);
  lower_->SetText(text);
  shootingData_->Refresh();
}

std::string CMarrowlanternView::TreeDirectory() const { return tree_->Directory(); }

void CMarrowlanternView::MarksChanged() { thumbnails_->MarksChanged(); }

std::string CMarrowlanternView::TopPath() const {
  const int top = thumbnails_->TopVisibleIndex();
  return session_.list.ValidIndex(top) ? session_.list.files[static_cast<std::size_t>(top)] : std::string();
}

void CMarrowlanternView::ScrollToTop(const std::string& path) {
  thumbnails_->ScrollTo(session_.list.IndexOfPath(path), QAbstractItemView::PositionAtTop);
}

void CMarrowlanternView::SelectInTree(const std::string& directory) { tree_->Select(directory); }

void CMarrowlanternView::RefreshTree() { tree_->Refresh(); }

void CMarrowlanternView::FocusList() {
  if (session_.mode != ViewMode::Main && !thumbnails_->hasFocus()) thumbnails_->setFocus();
}

void CMarrowlanternView::FocusMainPane() {
  session_.mode == ViewMode::Main ? picture_->setFocus() : thumbnails_->setFocus();
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
  tree_->SetDirectory(directory);
  Q_EMIT directoryShown();
}

void CMarrowlanternView::ListReplaced() {
  thumbnails_->SetEmptyText(ToQString(EmptyText(session_)));
  thumbnails_->ListReplaced();
  display_->ForgetAll();
  controls_->ListReplaced(session_.list);
}

void CMarrowlanternView::ListReordered() {
  thumbnails_->ListReordered();
  controls_->ListReplaced(session_.list);
}

void CMarrowlanternView::ShowImage(int index) { LoadImage(index, Reload::Force); }

void CMarrowlanternView::RecentDirectoriesChanged() { Q_EMIT recentDirectoriesChanged(); }

void CMarrowlanternView::SetCurrent(int index) {
  auto& list = session_.list;
  list.currentIndex = list.ValidIndex(index) ? index : -1;
  list.currentPath = list.currentIndex < 0 ? std::string() : list.files[static_cast<std::size_t>(index)];
}

void CMarrowlanternView::LoadImage(int index, Reload reload) {
  auto& list = session_.list;
  if (list.Empty()) {
    SetCurrent(-1);
    display_->Clear(EmptyText(session_));
    return;
  }
  if (!list.ValidIndex(index)) return;
  if (session_.mode == ViewMode::Thumbnails) return SetCurrent(index);
  if (index == list.currentIndex && reload == Reload::IfOther) return;
  SetCurrent(index);
  display_->Show(index, ColumnWidth());
}

void CMarrowlanternView::ReloadImage() {
  display_->Forget(session_.list.currentPath);
  LoadImage(session_.list.currentIndex, Reload::Force);
}

/// In pixels of the screen; 0 if it is hidden.
int CMarrowlanternView::ColumnWidth() const {
  return controls_->isVisibleTo(this) ? static_cast<int>(controls_->width() * controls_->devicePixelRatioF()) : 0;
}

}  // namespace ml::app
