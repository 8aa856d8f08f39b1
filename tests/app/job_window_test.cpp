#include "platform/ui/job_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <thread>

#include "platform/errors.h"
#include "platform/ui/qt_interaction.h"
#include "support/fakes.h"

namespace ml::platform::ui {
namespace {

QDialog* Window() {
  for (auto* widget : QApplication::topLevelWidgets()) {
    if (widget->objectName() == QLatin1String("jobWindow") && widget->isVisible())
      return qobject_cast<QDialog*>(widget);
  }
  return nullptr;
}

/// Calls `look` again and again while the job runs, until it is content.
template <class Look>
QTimer* WhileItRuns(Look look) {
  auto* timer = new QTimer;
  QObject::connect(timer, &QTimer::timeout, timer, [timer, look] {
    if (look()) timer->deleteLater();
  });
  timer->start(10);
  return timer;
}

void Rest() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

TEST(JobWindowTest, ShortJobHasNoneAndWhatItThrewArrives) {
  test::ScriptedInteraction ask;
  bool seen = false;
  const std::unique_ptr<QTimer> timer(WhileItRuns([&] { return (seen = seen || Window() != nullptr), false; }));
  RunJob(nullptr, {.title = QStringLiteral("Short")}, ask, [](const JobHost&, const std::stop_token&) {});
  EXPECT_THROW(RunJob(nullptr, {.title = QStringLiteral("Bad")}, ask,
                      [](const JobHost&, const std::stop_token&) { throw UserError("no"); }),
               UserError);
  EXPECT_FALSE(seen);
}

TEST(JobWindowTest, LongJobShowsItsProgressAndEndsWhenCancelled) {
  test::ScriptedInteraction ask;
  bool shown = false;
  WhileItRuns([&] {
    auto* window = Window();
    if (window == nullptr || window->findChild<QProgressBar*>()->value() != 40) return false;
    shown = window->windowTitle() == QLatin1String("Long") &&
            window->findChild<QLabel*>()->text() == QLatin1String("Moving image 3 of 5");
    auto* cancel = window->findChild<QPushButton*>();
    cancel->click();
    EXPECT_FALSE(cancel->isEnabled());
    EXPECT_TRUE(window->isVisible()) << "until the job has ended";
    return true;
  });
  EXPECT_THROW(RunJob(nullptr, {.title = QStringLiteral("Long")}, ask,
                      [](const JobHost& host, const std::stop_token& stop) {
                        host.progress.text("Moving image 3 of 5");
                        host.progress.percent(40);
                        while (!stop.stop_requested()) Rest();
                        throw Cancelled();
                      }),
               Cancelled);
  EXPECT_TRUE(shown);
  EXPECT_EQ(Window(), nullptr);
}

TEST(JobWindowTest, TwoBarsTellOfTheFileAndOfAll) {
  test::ScriptedInteraction ask;
  std::vector<std::pair<int, int>> told;
  bool shown = false;
  WhileItRuns([&] {
    auto* window = Window();
    if (window == nullptr || told.empty()) return false;
    const auto bars = window->findChildren<QProgressBar*>();
    for (const auto* label : window->findChildren<QLabel*>()) {
      EXPECT_LE(label->sizeHint().width(), label->width()) << "long paths lose their middle, not their end";
      EXPECT_LT(label->width(), 1000);
    }
    shown = bars.size() == 2 && bars[0]->value() == 40 && bars[1]->value() == 35;
    window->reject();
    return true;
  });
  RunJob(nullptr,
         {.title = QStringLiteral("Two"),
          .bars = JobBars::FileAndWhole,
          .position = [&](int index, int count) { told.emplace_back(index, count); }},
         ask, [](const JobHost& host, const std::stop_token& stop) {
           host.progress.percent(90);
           host.progress.position(2, 4);
           host.progress.percent(40);
           host.progress.secondText("Converting\n/" + std::string(3000, 'd') + "\nTo");
           while (!stop.stop_requested()) Rest();
         });
  EXPECT_TRUE(shown);
  EXPECT_EQ(told, (std::vector{std::pair(2, 4)}));
}

TEST(JobWindowTest, QuietJobHasNoneHoweverLongItTakes) {
  test::ScriptedInteraction ask;
  std::atomic<bool> enough = false;
  bool seen = false;
  const std::unique_ptr<QTimer> timer(WhileItRuns([&] { return (seen = seen || Window() != nullptr), false; }));
  QTimer::singleShot(900, [&] { enough = true; });
  RunJob(nullptr, {.title = QStringLiteral("Quiet"), .shows = JobWindowShows::Never}, ask,
         [&](const JobHost&, const std::stop_token&) {
           while (!enough) Rest();
         });
  EXPECT_FALSE(seen);
}

TEST(JobWindowTest, QuestionsAreAnsweredWhenTheProgramEnds) {
  QtInteraction ask(nullptr);
  auto answer = Button::Ok;
  QTimer::singleShot(0, [&] {
    QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
    RunJob(nullptr, {.title = QStringLiteral("Asking")}, ask, [&](const JobHost& host, const std::stop_token& stop) {
      while (!stop.stop_requested()) Rest();
      answer = host.ask.ask({.text = "Go on?", .buttons = Buttons::OkCancel});
    });
  });
  QApplication::exec();
  EXPECT_EQ(answer, Button::Cancel);
}

}  // namespace
}  // namespace ml::platform::ui
