#include "batch/ui/slideshow_window.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWheelEvent>
#include <cmath>
#include <utility>

#include "batch/ui/caption_dialog.h"
#include "batch/ui/slide_painter.h"
#include "batch/ui/slideshow_texts.h"
#include "platform/text.h"
#include "platform/ui/qt_interaction.h"
#include "platform/ui/qt_text.h"

namespace ml::batch::ui {
namespace {

using platform::ui::ToQString;

constexpr int kCursorMilliseconds = 1500;
constexpr int kWheelNotch = 120;

/// "Ctrl+Cursor Left" and what else stands behind the tab of a text; empty without one.
QKeySequence KeyIn(std::string_view text) {
  const auto tab = text.find('\t');
  if (tab == std::string_view::npos) return {};
  return QKeySequence(ToQString(text.substr(tab + 1)).remove(QStringLiteral("Cursor ")), QKeySequence::PortableText);
}

/// Further keys for what remote controls and the main window have others for.
QList<QKeySequence> KeysOf(std::string_view text) {
  QList<QKeySequence> keys{KeyIn(text)};
  if (text == texts::kNext) keys << Qt::Key_PageDown;
  if (text == texts::kPrevious) keys << Qt::Key_PageUp;
  if (text == texts::kToggleTag) keys << (Qt::CTRL | Qt::Key_T);
  return keys;
}

}  // namespace

/// One row of the menu.
struct SlideshowWindow::Command {
  using Window = SlideshowWindow;
  std::string_view text;
  void (*run)(Window& window);
  bool (*checked)(const Window& window) = nullptr;   ///< null: no mark
  bool (*offered)(const Window& window) = nullptr;   ///< in the menu; null: always. Its key works in any case
  bool (*possible)(const Window& window) = nullptr;  ///< null: always
  bool beginsGroup = false;
};

/// The order is that of the menu.
const SlideshowWindow::Command SlideshowWindow::kCommands[] = {
    {texts::kPause, [](auto& w) { w.player_.Pause(); }, nullptr, [](auto& w) { return w.player_.Playing(); }, nullptr,
     true},
    {texts::kPlay, [](auto& w) { w.player_.Play(); }, nullptr, [](auto& w) { return !w.player_.Playing(); }},
    {texts::kRandom, [](auto& w) { w.player_.SetRandomOrder(!w.State().randomOrder); },
     [](auto& w) { return w.State().randomOrder; }},
    {texts::kLoop, [](auto& w) { w.player_.SetLoop(!w.State().loop); }, [](auto& w) { return w.State().loop; }},
    {texts::kTag, [](auto& w) { w.Tag(true); }, nullptr, [](auto& w) { return !w.ShowsTagged(); },
     [](auto& w) { return w.ShowsImage(); }, true},
    {texts::kUntag, [](auto& w) { w.Tag(false); }, nullptr, [](auto& w) { return w.ShowsTagged(); },
     [](auto& w) { return w.ShowsImage(); }},
    {texts::kToggleTag, [](auto& w) { w.Tag(!w.ShowsTagged()); }, nullptr, [](auto&) { return false; },
     [](auto& w) { return w.ShowsImage(); }},
    {texts::kTaggedOnly, [](auto& w) { w.player_.SetTaggedOnly(!w.State().taggedOnly); },
     [](auto& w) { return w.State().taggedOnly; }},
    {texts::kRotateLeft, [](auto& w) { w.Rotate(imaging::Turn::cw270); }, nullptr, nullptr,
     [](auto& w) { return w.ShowsImage(); }, true},
    {texts::kRotateRight, [](auto& w) { w.Rotate(imaging::Turn::cw90); }, nullptr, nullptr,
     [](auto& w) { return w.ShowsImage(); }},
    {texts::kHighQuality, [](auto& w) { w.player_.SetQuality(!w.State().highQuality, w.State().blackAndWhite); },
     [](auto& w) { return w.State().highQuality; }, nullptr, nullptr, true},
    {texts::kBlackAndWhite, [](auto& w) { w.player_.SetQuality(w.State().highQuality, !w.State().blackAndWhite); },
     [](auto& w) { return w.State().blackAndWhite; }},
    {texts::kEditCaption, [](auto& w) { w.EditCaption(); }, nullptr, nullptr, nullptr, true},
    {texts::kShowCaption, [](auto& w) { w.player_.SetCaption(!w.State().showCaption, w.State().bottomCaption); },
     [](auto& w) { return w.State().showCaption; }},
    {texts::kBottomCaption, [](auto& w) { w.player_.SetCaption(w.State().showCaption, !w.State().bottomCaption); },
     [](auto& w) { return w.State().bottomCaption; }},
    {texts::kPrevious, [](auto& w) { w.player_.Step(-1); }, nullptr, nullptr, nullptr, true},
    {texts::kNext, [](auto& w) { w.player_.Step(1); }},
    {texts::kExit, [](auto& w) { w.reject(); }},
};

SlideshowWindow::SlideshowWindow(SlideshowState state, TaggedPaths tagged, SlideshowHost host,
                                 SlideshowPictures& pictures, QWidget* parent)
    : QDialog(parent),
      host_(std::move(host)),
      player_(std::move(state), std::move(tagged), host_.making, pictures, nullptr),
      awake_(ToQString(texts::kTitle)) {
  setObjectName(QStringLiteral("slideshow"));
  setWindowTitle(ToQString(texts::kTitle));
  setAccessibleName(windowTitle());
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  AddActions();
  connect(&player_, &SlideshowPlayer::slideChanged, this, &SlideshowWindow::ShowSlide);
  connect(&player_, &SlideshowPlayer::failed, this, &SlideshowWindow::Tell, Qt::QueuedConnection);
  cursorRests_.setSingleShot(true);
  cursorRests_.setInterval(kCursorMilliseconds);
  connect(&cursorRests_, &QTimer::timeout, this, [this] { setCursor(Qt::BlankCursor); });
  cursorRests_.start();
  if (parent != nullptr) {
    setScreen(parent->screen());
  }
  setGeometry(screen()->geometry());
  setWindowState(Qt::WindowFullScreen);
  MeasureRoom();  // so that the first picture is on its way before the window is
}

SlideshowWindow::~SlideshowWindow() = default;

QAction* SlideshowWindow::AddAction(std::string_view text, const std::function<void()>& run) {
  auto* action = new QAction(ToQString(text), this);
  action->setShortcuts(KeysOf(text));
  connect(action, &QAction::triggered, this, [this, run] {
    run();
    UpdateActions();
  });
  addAction(action);
  return action;
}

void SlideshowWindow::AddActions() {
  for (const auto& row : kSlideshowIntervals) {
    auto* action = AddAction(row.text, [this, &row] { player_.SetInterval(row.seconds); });
    action->setCheckable(true);
    intervals_.push_back(action);
  }
  for (const auto& row : kCommands) {
    auto* action = AddAction(row.text, [this, &row] { row.run(*this); });
    action->setCheckable(row.checked != nullptr);
    commands_.push_back(action);
  }
  UpdateActions();
}

void SlideshowWindow::UpdateActions() {
  for (std::size_t i = 0; i < intervals_.size(); ++i) {
    intervals_[i]->setChecked(kSlideshowIntervals[i].seconds == State().interval);
  }
  for (std::size_t i = 0; i < commands_.size(); ++i) {
    const auto& row = kCommands[i];
    if (row.checked != nullptr) commands_[i]->setChecked(row.checked(*this));
    commands_[i]->setEnabled(row.possible == nullptr || row.possible(*this));
  }
}

void SlideshowWindow::FillMenu(QMenu& menu) {
  UpdateActions();
  for (auto* action : intervals_) menu.addAction(action);
  for (std::size_t i = 0; i < commands_.size(); ++i) {
    const auto& row = kCommands[i];
    if (row.beginsGroup) menu.addSeparator();
    if (row.offered == nullptr || row.offered(*this)) menu.addAction(commands_[i]);
  }
}

void SlideshowWindow::contextMenuEvent(QContextMenuEvent* event) {
  const QPoint place = event->globalPos();
  WithDialog([this, place] {
    QMenu menu(this);
    FillMenu(menu);
    menu.exec(place);
  });
}

void SlideshowWindow::WithDialog(const std::function<void()>& ask) {
  const bool before = State().dialogOpen;
  player_.SetDialogOpen(true);
  cursorRests_.stop();
  unsetCursor();
  ask();
  player_.SetDialogOpen(before);
  ShowCursor();
}

void SlideshowWindow::Tell(const QString& sentence) {
  if (!isVisible()) return;
  WithDialog([&] {
    platform::ui::QtInteraction(this).message({.text = sentence.toStdString(), .icon = platform::BoxIcon::Error});
  });
}

void SlideshowWindow::EditCaption() {
  WithDialog([this] {
    if (const auto format = AskCaptionFormat(*this, State().formatString)) player_.SetFormatString(*format);
  });
}

/// Acts, as all edits, on the image that is seen, which may not be the one that is on its way.
void SlideshowWindow::Rotate(imaging::Turn turn) {
  if (!ShowsImage()) return;
  const auto path = player_.Shown().path;
  WithDialog([&] { host_.rotate(path, turn, *this); });
  player_.FileChanged(path);
}

void SlideshowWindow::Tag(bool on) {
  if (!ShowsImage()) return;
  const auto path = player_.Shown().path;
  host_.setTag(path, on);
  player_.SetTag(path, on);
}

void SlideshowWindow::ShowSlide() {
  setAccessibleDescription(ToQString(player_.Shown().path));
  UpdateActions();
  // At once, so that from picture to picture the interval counts and not the load of the event loop.
  if (isVisible()) repaint();
}

/// Also when painting: a move to another screen changes the scale without a resize.
void SlideshowWindow::MeasureRoom() {
  const double ratio = devicePixelRatioF();
  const QSizeF pixels = QSizeF(size()) * ratio;
  player_.SetRoom({static_cast<int>(std::floor(pixels.width())), static_cast<int>(std::floor(pixels.height()))},
                  static_cast<int>(std::ceil(CaptionLineHeight(font()) * ratio)));
}

void SlideshowWindow::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  MeasureRoom();
}

void SlideshowWindow::paintEvent(QPaintEvent*) {
  QTimer::singleShot(0, this, &SlideshowWindow::MeasureRoom);
  QPainter painter(this);
  painter.fillRect(rect(), Qt::black);
  const auto& slide = player_.Shown();
  std::vector<std::string> lines;
  if (slide.picture && slide.picture->main.Empty()) {
    for (const auto line : platform::SplitLines(slide.picture->failure)) lines.emplace_back(line);
  } else if (slide.picture) {
    lines = slide.caption;
  } else if (State().taggedOnly && State().shown.empty()) {
    lines = {std::string(texts::kNothingTagged), std::string(texts::kHowToExit), std::string(texts::kHowToMenu)};
  }
  PaintSlide(painter, *this,
             {.picture = slide.picture.get(),
              .lines = &lines,
              .captionBelow = State().bottomCaption,
              .tagged = ShowsImage() && ShowsTagged()});
}

void SlideshowWindow::ShowCursor() {
  unsetCursor();
  cursorRests_.start();
}

void SlideshowWindow::mouseMoveEvent(QMouseEvent*) { ShowCursor(); }

void SlideshowWindow::wheelEvent(QWheelEvent* event) {
  event->accept();
  const QPoint delta = event->angleDelta();
  // With Alt the toolkit hands a vertical wheel over as a horizontal one.
  wheelRest_ += delta.y() != 0 ? delta.y() : delta.x();
  const int turned = wheelRest_ / kWheelNotch * kWheelNotch;
  wheelRest_ -= turned;
  if (turned == 0) return;
  const bool held = event->modifiers() != Qt::NoModifier || event->buttons() != Qt::NoButton;
  held ? Rotate(turned < 0 ? imaging::Turn::cw90 : imaging::Turn::cw270) : player_.TurnWheel(turned);
  UpdateActions();
}

void SlideshowWindow::done(int result) {
  player_.Pause();
  QDialog::done(result);
}

}  // namespace ml::batch::ui
