#pragma once

#include <QString>
#include <functional>
#include <stop_token>

#include "platform/job_host.h"

class QWidget;

namespace ml::platform::ui {

/// What a job may ask and tell, and when it has to end: it then throws Cancelled or returns early.
using Job = std::function<void(const JobHost& host, const std::stop_token& stop)>;

enum class JobWindowShows { AfterHalfASecond, Never };

/// Bars for the job, or for the whole of it and for the file at hand.
enum class JobBars { One, FileAndWhole };

struct JobLook {
  QString title;
  JobWindowShows shows = JobWindowShows::AfterHalfASecond;
  int nice = 0;  ///< of the job's thread, see SetThreadNice
  JobBars bars = JobBars::One;
  /// Told on the window's thread at which file of how many the job is, from 1; may be empty.
  std::function<void(int index, int count)> position = {};
};

/// Runs `job` on a thread of its own and returns when it has ended. What lasts longer than half a second gets a window
/// over `parent` with its progress and a button to cancel, unless it is not to have one; keys and clicks for the other
/// windows wait until then and do nothing afterwards. If the program is told to end, so is the job. Throws what the job
/// threw. To be called on the window's thread; `ask` is called on the job's.
void RunJob(QWidget* parent, const JobLook& look, Interaction& ask, const Job& job);

}  // namespace ml::platform::ui
