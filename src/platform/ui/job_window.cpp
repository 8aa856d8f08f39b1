#include "platform/ui/job_window.h"

#include <QCloseEvent>
#include <QDialog>
#include <QEventLoop>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/clock.h"
#include "platform/thread_priority.h"
#include "platform/ui/qt_text.h"

namespace ml::platform::ui {
namespace {

/// How far the job is. Written on its thread and read on the window's.
class JobState final : public Progress {
 public:
  explicit JobState(JobBars bars) : bars_(bars) {}

  struct Snapshot {
    int percent = 0;           ///< of the file at hand where there are two bars
    int index = 0, count = 0;  ///< of the files; 0 until one is told
    std::string text, secondText;
    QImage picture;
  };

  void percent(int value) override {
    const std::scoped_lock lock(lock_);
    now_.percent = value;
  }
  void text(const std::string& line) override {
    const std::scoped_lock lock(lock_);
    now_.text = line;
  }
  void secondText(const std::string& line) override {
    const std::scoped_lock lock(lock_);
    now_.secondText = line;
  }
  void picture(std::span<const std::byte> rgb, int width, int height) override {
    const QImage image(reinterpret_cast<const uchar*>(rgb.data()), width, height, qsizetype{3} * width,
                       QImage::Format_RGB888);
    const std::scoped_lock lock(lock_);
    now_.picture = image.copy();
  }
  void position(int index, int count) override {
    const std::scoped_lock lock(lock_);
    now_.index = index;
    now_.count = count;
    if (count > 0) now_.percent = bars_ == JobBars::One ? (index - 1) * 100 / count : 0;
  }

  Snapshot Now() const {
    const std::scoped_lock lock(lock_);
    return now_;
  }

 private:
  const JobBars bars_;
  mutable std::mutex lock_;
  Snapshot now_;
};

/// Asks the state for news as often as an eye can see them: a job may report thousands of times a second.
class JobWindow final : public QDialog {
 public:
  JobWindow(QWidget* parent, const JobLook& look, const JobState& state, std::stop_source stop)
      : QDialog(parent), look_(look), state_(state), stop_(std::move(stop)) {
    setObjectName(QStringLiteral("jobWindow"));
    setWindowTitle(look.title);
    setWindowModality(Qt::ApplicationModal);
    auto* layout = new QVBoxLayout(this);
    for (auto* label : {&text_, &secondText_}) {
      label->setTextFormat(Qt::PlainText);
      label->setMinimumWidth(fontMetrics().averageCharWidth() * kTextWidth);
      layout->addWidget(label);
    }
    picture_.setAlignment(Qt::AlignCenter);
    picture_.hide();
    layout->addWidget(&picture_);
    const bool two = look.bars == JobBars::FileAndWhole;
    AddBar(bar_, two ? "This image" : "Progress");
    if (two) AddBar(whole_, "All images");
    whole_.setVisible(two);
    cancel_.setText(QStringLiteral("Cancel"));
    layout->addWidget(&cancel_, 0, Qt::AlignRight);
    connect(&cancel_, &QPushButton::clicked, this, &JobWindow::reject);
    connect(&refresh_, &QTimer::timeout, this, &JobWindow::Refresh);
    refresh_.start(kRefreshMilliseconds);
    Refresh();
  }

  /// Closing it in any way asks the job to end; the window stays until it has.
  void reject() override {
    stop_.request_stop();
    cancel_.setEnabled(false);
    cancel_.setText(QStringLiteral("Cancelling..."));
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    reject();
  }

 private:
  static constexpr int kTextWidth = 56, kRefreshMilliseconds = 50;

  void AddBar(QProgressBar& bar, const char* name) {
    bar.setRange(0, 100);
    bar.setAccessibleName(QString::fromLatin1(name));
    bar.setToolTip(bar.accessibleName());
    layout()->addWidget(&bar);
  }

  /// Long paths lose their middle: the window stays on the screen and does not jump.
  QString Shortened(const std::string& text) const {
    const int room = isVisible() ? text_.width() : text_.minimumWidth();
    auto lines = ToQString(text).split(QLatin1Char('\n'));
    for (auto& line : lines) line = fontMetrics().elidedText(line, Qt::ElideMiddle, room);
    return lines.join(QLatin1Char('\n'));
  }

  void Refresh() {
    const auto now = state_.Now();
    const int percent = std::clamp(now.percent, 0, 100);
    bar_.setValue(percent);
    if (now.count > 0) whole_.setValue((percent + (now.index - 1) * 100) / now.count);
    if (look_.position && now.index > 0 && now.index != told_) look_.position(told_ = now.index, now.count);
    text_.setText(Shortened(now.text));
    secondText_.setText(Shortened(now.secondText));
    secondText_.setVisible(!now.secondText.empty());
    if (now.picture.isNull() || now.picture.cacheKey() == shown_) return;
    shown_ = now.picture.cacheKey();
    picture_.setPixmap(QPixmap::fromImage(now.picture));
    picture_.show();
  }

  const JobLook& look_;
  const JobState& state_;
  std::stop_source stop_;
  QLabel text_, secondText_, picture_;
  QProgressBar bar_, whole_;
  int told_ = 0;
  QPushButton cancel_;
  QTimer refresh_;
  qint64 shown_ = 0;
};

}  // namespace

void RunJob(QWidget* parent, const JobLook& look, Interaction& ask, const Job& job) {
  constexpr int kQuietMilliseconds = 500;
  JobState state(look.bars);
  const SystemClock clock;
  std::stop_source stop;
  std::exception_ptr failure;
  bool done = false;  // as the window's thread knows it
  QEventLoop loop;
  std::jthread thread([&] {
    SetThreadNice(look.nice);
    try {
      job({.ask = ask, .progress = state, .clock = clock}, stop.get_token());
    } catch (...) {
      failure = std::current_exception();
    }
    QMetaObject::invokeMethod(
        &loop,
        [&] {
          done = true;
          loop.quit();
        },
        Qt::QueuedConnection);
  });
  std::optional<JobWindow> window;
  QTimer quiet;
  quiet.setSingleShot(true);
  QObject::connect(&quiet, &QTimer::timeout, &loop, &QEventLoop::quit);
  if (look.shows == JobWindowShows::AfterHalfASecond) quiet.start(kQuietMilliseconds);
  // A key that is pressed meanwhile waits for the end of a short job.
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  if (!done && look.shows == JobWindowShows::AfterHalfASecond) {
    window.emplace(parent, look, state, stop);
    window->show();
    loop.exec();
  }
  if (!done) stop.request_stop();  // the program ends
  // No loop runs any more, but a job that asks must get its answer before it can end.
  while (!done) loop.processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
  thread.join();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace ml::platform::ui
