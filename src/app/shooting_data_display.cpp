#include "app/shooting_data_display.h"

#include <QGuiApplication>
#include <QScreen>

#include "app/session.h"
#include "imagefiles/ui/shooting_data_window.h"
#include "metadata/shooting_rows.h"
#include "platform/paths.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

constexpr int kNeverPlaced = -1;
/// What the settings hold before the window had a size: smaller than it can be made.
constexpr int kNeverSized = 100;
/// Right of where the histogram opens.
constexpr QPoint kFirstPlace{320, 16};
constexpr QSize kFirstSize{400, 520};
/// Longer than from key to key while one is held down.
constexpr int kRestMilliseconds = 200;

QString ShownName(const std::string& path) { return platform::ui::ToLabel(platform::FileName(path)); }

}  // namespace

ShootingDataDisplay::ShootingDataDisplay(Session& session, QWidget* parent)
    : QObject(parent), session_(session), parent_(parent) {
  rest_.setSingleShot(true);
  rest_.setInterval(kRestMilliseconds);
  connect(&rest_, &QTimer::timeout, this, [this] {
    if (awaited_) Fill();
  });
}

void ShootingDataDisplay::ToggleWindow() { SetShown(!session_.memory.shootingDataShown); }

void ShootingDataDisplay::OpenWindow() {
  SetShown(true);
  window_->Activate();
}

void ShootingDataDisplay::SetShown(bool shown) {
  session_.memory.shootingDataShown = shown;
  if (shown && window_ == nullptr) MakeWindow();
  if (shown) Fill();
  if (window_ != nullptr) window_->setVisible(shown);
}

void ShootingDataDisplay::Refresh() {
  if (!session_.memory.shootingDataShown) return;
  const int target = session_.TargetIndex();
  const auto path = target < 0 ? std::string() : session_.list.files[static_cast<std::size_t>(target)];
  if (path == path_) {
    if (!awaited_) Fill();
    return;
  }
  const bool resting = !rest_.isActive();
  rest_.start();
  if (resting) return Fill();
  path_ = path;
  awaited_ = true;
  window_->Await(ShownName(path));
}

/// The file was read for the status line already.
void ShootingDataDisplay::Fill() {
  auto* data = session_.TargetData();
  path_ = data == nullptr ? std::string() : data->path;
  awaited_ = false;
  using Rows = std::vector<metadata::ShootingRows>;
  window_->ShowImage(ShownName(path_), data == nullptr ? Rows() : ListShootingData(*data, session_.locale));
}

void ShootingDataDisplay::MakeWindow() {
  using imagefiles::ui::ShootingDataWindow;
  window_ = new ShootingDataWindow(parent_);
  PlaceWindow();
  connect(window_, &ShootingDataWindow::placed, this, &ShootingDataDisplay::KeepPlace);
  connect(window_, &ShootingDataWindow::closed, this, [this] {
    session_.memory.shootingDataShown = false;
    Q_EMIT changed();
  });
}

/// The screen that it was on may be gone, or a smaller one.
void ShootingDataDisplay::PlaceWindow() {
  const auto& from = session_.settings.shootingData;
  const QSize size(from.shootingDataWidth, from.shootingDataHeight);
  const bool sized = size.width() > kNeverSized || size.height() > kNeverSized;
  const QPoint place(from.shootingDataX, from.shootingDataY);
  const bool placed = place != QPoint(kNeverPlaced, kNeverPlaced);
  const auto* screen = placed ? QGuiApplication::screenAt(place) : nullptr;
  const auto room = (screen != nullptr ? screen : parent_->screen())->availableGeometry().size();
  window_->resize((sized ? size : kFirstSize).boundedTo(room));
  window_->move(screen != nullptr ? place : parent_->mapToGlobal(kFirstPlace));
}

void ShootingDataDisplay::KeepPlace() {
  auto& to = session_.settings.shootingData;
  to.shootingDataX = window_->x();
  to.shootingDataY = window_->y();
  to.shootingDataWidth = window_->width();
  to.shootingDataHeight = window_->height();
}

}  // namespace ml::app
