#include "rawconvert/batch/batch_conversion.h"

#include <algorithm>
#include <functional>
#include <future>
#include <optional>
#include <utility>

#include "metadata/exif_data.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "rawconvert/batch/output_chooser.h"
#include "rawconvert/batch/output_directory.h"
#include "rawconvert/batch/time_estimate.h"
#include "rawconvert/develop_error.h"
#include "rawconvert/develop_raw_file.h"
#include "rawconvert/messages.h"
#include "rawconvert/picture_collection.h"

namespace ml::rawconvert {
namespace {

constexpr int kMinResolution = 25, kMaxResolution = 999;

/// What ends the run; the sentence names the file.
class RunFailed : public platform::UserError {
 public:
  using UserError::UserError;
};

class BatchRun {
 public:
  BatchRun(const BatchConversion& batch, RawConversionSettings& settings, RawDeveloper& developer,
           const platform::JobHost& host, const std::stop_token& stop)
      : batch_(batch),
        settings_(settings),
        developer_(developer),
        host_(host),
        stop_(stop),
        chooser_(host, batch.files) {
    options_.resolution = std::clamp(options_.resolution, kMinResolution, kMaxResolution);
  }

  std::vector<ConvertedFile> Run() {
    const bool failed = Guard([this] { RunFiles(); });
    developer_.Development().Expect({}, {});
    const bool failedAtLast = Guard([this] { FinishWriting(); });
    if (!failed && !failedAtLast && !report_.empty()) Show(report_);
    return std::move(results_);
  }

 private:
  void Show(const std::string& text) {
    host_.ask.message({.text = text, .caption = messages::kTitle, .icon = platform::BoxIcon::Error});
  }

  /// Ends what `work` does at the first failure that ends a run, and tells whether there was one.
  bool Guard(const std::function<void()>& work) {
    try {
      work();
    } catch (const platform::Cancelled&) {
      // What was done stays; the result tells how far the run came.
    } catch (const platform::UserError& error) {
      Show(error.what());
      return true;
    }
    return false;
  }

  void RunFiles() {
    developer_.CameraImages().coefficients = {};  // a white balance goes from file to file, not from run to run
    host_.progress.text(messages::kMakingDirectory + batch_.outputDirectory);
    EnsureConversionDirectory(batch_.outputDirectory);
    const int count = static_cast<int>(batch_.files.size());
    const std::time_t start = host_.clock.now();
    for (int i = 0; i < count; ++i) {
      if (stop_.stop_requested()) throw platform::Cancelled();
      const auto& source = batch_.files[static_cast<std::size_t>(i)];
      Announce(source, i, {start + chooser_.Waited(), count});
      results_.push_back({.source = source, .output = destination_});
      next_ = i + 1 < count ? batch_.files[static_cast<std::size_t>(i) + 1] : std::string();
      ConvertOrForget(results_.size() - 1);
    }
    FinishWriting();
  }

  void Announce(const std::string& source, int index, const TimeEstimate& estimate) {
    destination_ = ConvertedPath(source, settings_.method, batch_);
    host_.progress.position(index + 1, estimate.count);
    host_.progress.secondText("Converting Raw file " + std::to_string(index + 1) + " of " +
                              std::to_string(estimate.count) + "\n" + source + "\nTo: " + destination_ + "\n" +
                              estimate.Text(host_.clock.now(), index));
  }

  /// A file in work when the run ends for another reason than its own has no result.
  void ConvertOrForget(std::size_t index) {
    try {
      ConvertOne(index);
    } catch (...) {
      if (results_[index].result == Converted::Skipped) results_.resize(index);
      throw;
    }
  }

  void ConvertOne(std::size_t index) {
    const std::string source = results_[index].source;
    // A name that is being written is not there yet.
    if (writing_.valid() && platform::SameFile(results_[written_].output, destination_)) FinishWriting();
    const auto name = chooser_.Choose({source, destination_, FactsOf(options_.format).fileFilter});
    if (!name) {
      if (chooser_.IsSource(destination_)) results_[index].message = messages::kInPlaceOfSource;
      return;
    }
    results_[index].output = *name;
    developer_.Development().Expect(next_, stop_);
    auto picture = Develop(index);
    FinishWriting();
    if (!picture) return Leave(results_[index]);
    host_.progress.text(messages::kWriting);
    written_ = index;
    writing_ = std::async(std::launch::async, [picture = std::move(*picture), path = *name, stop = stop_] {
      WriteConverted(picture, path, stop);
    });
  }

  /// Kept: nothing is shown. The result tells why all the same, if nothing went wrong before.
  static void Leave(ConvertedFile& file) {
    if (file.result == Converted::Failed) return;
    file.message = IsDevelopableName(file.source) ? messages::kNoPicture : messages::kNameTooLong;
  }

  std::optional<ConvertedPicture> Develop(std::size_t index) {
    const std::string source = results_[index].source;
    const auto failed = [&](const std::string& message) {
      results_[index].result = Converted::Failed;
      results_[index].message = message;
      return std::nullopt;
    };
    const auto named = messages::kErrorConverting + source;
    try {
      return ConvertPicture(source, settings_, options_, {developer_, host_.progress, stop_});
    } catch (const platform::Cancelled&) {
      throw;
    } catch (const platform::UserError& error) {
      failed(error.what());
      throw RunFailed(named + "\n" + error.what());
    } catch (const DevelopError& error) {
      const auto complaint = RawFileComplaint(error.Code(), metadata::ExifData(source).model);
      report_ += named + "\npsCException = " + CodeText(error.Code()) + "\n" + complaint;
      return failed(complaint.empty() ? error.what() : std::string(platform::TrimRight(complaint)));
    } catch (const UndevelopableRaw& error) {
      report_ += named + "\n" + error.what() + "\n";
      return failed(error.what());
    } catch (const std::exception& error) {
      Show(named);
      return failed(error.what());
    }
  }

  /// Of the picture before. Throws what ends the run.
  void FinishWriting() {
    if (!writing_.valid()) return;
    auto& file = results_[written_];
    try {
      writing_.get();
      file.result = Converted::Yes;
    } catch (const platform::Cancelled&) {
      throw;
    } catch (const std::exception& error) {
      file.result = Converted::Failed;
      file.message = error.what();
      throw RunFailed(messages::kErrorConverting + file.source + "\n" + error.what());
    }
  }

  const BatchConversion& batch_;
  ConversionOptions options_ = batch_.options;
  RawConversionSettings& settings_;
  RawDeveloper& developer_;
  const platform::JobHost& host_;
  const std::stop_token& stop_;
  OutputChooser chooser_;
  std::vector<ConvertedFile> results_;
  std::string next_;         ///< source of the file after the one at hand; empty at the last
  std::string destination_;  ///< of the file at hand, before it is chosen
  std::string report_;       ///< of files that could not be developed
  std::size_t written_ = 0;  ///< index of the file that `writing_` writes
  std::future<void> writing_;
};

}  // namespace

std::string ConvertedPath(const std::string& source, Method method, const BatchConversion& batch) {
  const auto name = platform::FileName(source);
  std::string base(name.substr(0, name.rfind('.')));
  if (batch.appendMethodLetter && method == Method::Linear) base += "L";
  if (batch.appendMethodLetter && method == Method::Combined) base += "C";
  return platform::JoinPath(batch.outputDirectory, base + std::string(FactsOf(batch.options.format).extension));
}

std::vector<ConvertedFile> RunBatchConversion(const BatchConversion& batch, RawConversionSettings& settings,
                                              RawDeveloper& developer, const platform::JobHost& host,
                                              const std::stop_token& stop) {
  if (batch.files.empty() || stop.stop_requested()) return {};
  return BatchRun(batch, settings, developer, host, stop).Run();
}

}  // namespace ml::rawconvert
