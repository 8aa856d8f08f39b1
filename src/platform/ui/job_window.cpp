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
#include <atomic>
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
  struct Snapshot {
    int percent = 0;
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
    const QImage image(reinterpret_cast<const uchar*>(rgb.data()), width, height, width * 3, QImage::Format_RGB888);
    const std::scoped_lock lock(lock_);
    now_.picture = image.copy();
  }
  void position(int index, int count) override {
    if (count > 0) percent((index - 1) * 100 / count);
  }

  Snapshot Now() const {
    const std::scoped_lock lock(lock_);
    return now_;
  }

 private:
  mutable std::mutex lock_;
  Snapshot now_;
};

/// Asks the state for news as often as an eye can see them: a job may report thousands of times a second.
class JobWindow final : public QDialog {
 public:
  JobWindow(QWidget* parent, const QString& title, const JobState& state, std::stop_source stop)
      : QDialog(parent), state_(state), stop_(std::move(stop)) {
    setObjectName(QStringLiteral("jobWindow"));
    setWindowTitle(title);
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
    bar_.setRange(0, 100);
    layout->addWidget(&bar_);
    cancel_.setText(QStringLiteral("Cancel"));
    bar_.setAccessibleName(QStringLiteral("Progress"));
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

  void Refresh() {
    const auto now = state_.Now();
    bar_.setValue(now.percent);
    text_.setText(ToQString(now.text));
    secondText_.setText(ToQString(now.secondText));
    secondText_.setVisible(!now.secondText.empty());
    if (now.picture.isNull() || now.picture.cacheKey() == shown_) return;
    shown_ = now.picture.cacheKey();
    picture_.setPixmap(QPixmap::fromImage(now.picture));
    picture_.show();
  }

  const JobState& state_;
  std::stop_source stop_;
  QLabel text_, secondText_, picture_;
  QProgressBar bar_;
  QPushButton cancel_;
  QTimer refresh_;
  qint64 shown_ = 0;
};

}  // namespace

void RunJob(QWidget* parent, const JobLook& look, Interaction& ask, const Job& job) {
  constexpr int kQuietMilliseconds = 500;
  JobState state;
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
    window.emplace(parent, look.title, state, stop);
    window->show();
    loop.exec();
  }
  if (!done) stop.request_stop();  // the program ends
  thread.join();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace ml::platform::ui
