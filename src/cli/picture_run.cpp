#include "cli/picture_run.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/output.h"
#include "cli/progress_line.h"
#include "platform/data_folders.h"
#include "platform/errors.h"
#include "platform/ordered_jobs.h"
#include "platform/paths.h"

namespace ml::cli {

namespace {

/// One image of the run: what is found out on some thread, to be told in its turn.
struct Job {
  OutputFile output;
  std::optional<std::string> failure;
  bool made = false;
  int width = 0, height = 0;
  const char* source = nullptr;
};

/// Failures, also of a library or of memory, are the file's own.
template <class Step>
void Attempt(Job& job, const std::string& given, Step&& step) {
  try {
    step();
  } catch (const platform::UserError& error) {
    job.failure = error.what();
  } catch (const std::exception& error) {
    job.failure = given + ": " + error.what();
  } catch (...) {
    job.failure = given + ": cannot be read";
  }
}

class PictureJobs {
 public:
  PictureJobs(const PictureRun& run, const PictureMaker& maker, RunState& state)
      : run_(run),
        maker_(maker),
        state_(state),
        outputs_(run.directory, run.existing),
        jobs_(run.files.size()),
        progress_(static_cast<int>(run.files.size())) {}

  /// Whether all were made or failed.
  bool Run() {
    bool all = false;
    try {
      all = RunAll();
    } catch (...) {
      outputs_.Settle();
      throw;
    }
    outputs_.Settle();
    return all;
  }

 private:
  bool RunAll() {
    const int count = static_cast<int>(jobs_.size());
    const int finished = platform::RunOrdered({.count = count,
                                               .threads = maker_.threads,
                                               .begin = [this](int index) { Choose(index); },
                                               .work = [this](int index) { Make(index); },
                                               .finish = [this](int index) { Tell(index); }},
                                              state_.stop);
    progress_.Clear();
    if (state_.json) PrintJson(result_);
    return finished == count;
  }

  Job& At(int index) { return jobs_[static_cast<std::size_t>(index)]; }
  const std::string& Given(int index) const { return run_.files[static_cast<std::size_t>(index)]; }

  void Choose(int index) {
    auto& job = At(index);
    Attempt(job, Given(index), [&] {
      const auto path = platform::AbsolutePath(Given(index));
      job.output = outputs_.Choose(std::string(platform::FileName(path)) + ".png", path);
    });
  }

  void Make(int index) {
    auto& job = At(index);
    const bool wanted = job.output.result == WriteResult::Written || job.output.result == WriteResult::WouldWrite;
    if (!job.failure && wanted)
      Attempt(job, Given(index), [&] { MakeFile(job, platform::AbsolutePath(Given(index))); });
    outputs_.Close(job.output);
  }

  void MakeFile(Job& job, const std::string& path) {
    const auto picture = maker_.make(path);
    outputs_.Write(job.output, imaging::EncodePng(picture.pixels, maker_.colour));
    job.width = picture.pixels.width;
    job.height = picture.pixels.height;
    job.source = picture.source;
    job.made = true;
  }

  void Tell(int index) {
    const auto& job = At(index);
    progress_.Next(Given(index));
    if (job.failure) {
      state_.Fail(*job.failure);
    } else if (job.output.result == WriteResult::Refused) {
      state_.Fail(job.output.note);
    } else if (job.output.result == WriteResult::Skipped) {
      Complain(job.output.note);
    }
    if (state_.json) result_.push_back(ObjectOf(job, Given(index)));
    if (!state_.json && job.made) PrintMade(job, Given(index));
  }

  static Json ObjectOf(const Job& job, const std::string& given) {
    Json object;
    PutPath(object, "path", given);
    object["output"] = nullptr;
    object["width"] = job.width;
    object["height"] = job.height;
    object["source"] = nullptr;
    if (job.made) {
      PutPath(object, "output", job.output.path);
      object["source"] = job.source;
    }
    if (job.failure) object["message"] = JsonText(*job.failure);
    return object;
  }

  static void PrintMade(const Job& job, const std::string& given) {
    const auto size = std::to_string(job.width) + " x " + std::to_string(job.height);
    const char* verb = job.output.result == WriteResult::Written ? " -> " : " (not written) -> ";
    PrintLine(given + verb + job.output.path + ", " + size + ", from " + job.source);
  }

  const PictureRun& run_;
  const PictureMaker& maker_;
  RunState& state_;
  OutputFiles outputs_;
  std::vector<Job> jobs_;
  ProgressLine progress_;
  Json result_ = Json::array();
};

}  // namespace

void MakePictures(const PictureRun& run, const PictureMaker& maker, RunState& state) {
  if (!run.existing.dryRun) platform::ensureDirectory(run.directory);
  if (!PictureJobs(run, maker, state).Run()) throw platform::Cancelled();
}

}  // namespace ml::cli
