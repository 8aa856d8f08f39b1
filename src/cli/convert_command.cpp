#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/camera_limits.h"
#include "cli/commands.h"
#include "cli/output.h"
#include "cli/progress_line.h"
#include "cli/run_state.h"
#include "cli/unattended_answers.h"
#include "imagefiles/raw_files.h"
#include "options/conversion_options_of.h"
#include "options/raw_options.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "rawconvert/batch/batch_conversion.h"
#include "rawconvert/batch/output_directory.h"
#include "rawconvert/camera_family.h"
#include "rawconvert/normalise_settings.h"
#include "rawconvert/raw_developer.h"

/// convert: develops raw files and writes the pictures as JPEG, JPEG 2000, PNG or TIFF.
namespace ml::cli {
namespace {

using rawconvert::Converted;
using rawconvert::ConvertedFile;
using rawconvert::Method;
using rawconvert::OutputFormat;

const std::map<std::string, Method> kMethods = {
    {"normal", Method::Normal}, {"linear", Method::Linear}, {"combined", Method::Combined}};

std::map<std::string, OutputFormat> Formats() {
  std::map<std::string, OutputFormat> formats;
  for (int i = 0; i <= static_cast<int>(OutputFormat::Tiff16); ++i) {
    const auto format = static_cast<OutputFormat>(i);
    formats.emplace(rawconvert::FactsOf(format).word, format);
  }
  return formats;
}

struct ConvertArguments {
  std::vector<std::string> files;
  std::string out;
  std::optional<OutputFormat> format;
  std::optional<Method> method;
  std::optional<int> quality;
  bool overwrite = false, skip = false, dryRun = false;
};

/// Answers by the options, and keeps what the run says for those whose files it leaves out.
class ConvertAnswers final : public UnattendedAnswers {
 public:
  explicit ConvertAnswers(const ConvertArguments& arguments) : arguments_(arguments) {}
  std::vector<std::string> messages;

  void message(const platform::MessageBox& box) override { messages.push_back(box.text); }
  platform::Button ask(const platform::MessageBox&) override { return platform::Button::No; }
  platform::FileExistsAnswer fileExists(const std::string&) override {
    // Asked again after "all" only where the run would overwrite what it made itself.
    const bool overwrite = arguments_.overwrite && !answered_;
    answered_ = true;
    return overwrite ? platform::FileExistsAnswer::OverwriteAll : platform::FileExistsAnswer::Skip;
  }
  void BeginRun() { answered_ = false; }

 private:
  const ConvertArguments& arguments_;
  bool answered_ = false;
};

/// "12 of 200 NAME" for each file.
class ConvertProgress final : public platform::NoProgress {
 public:
  explicit ConvertProgress(const std::vector<std::string>& files) : line_(static_cast<int>(files.size())) {}
  void Begin(const std::vector<std::string>& files) { files_ = &files; }
  void position(int index, int) override { line_.Next((*files_)[static_cast<std::size_t>(index - 1)]); }
  void Clear() { line_.Clear(); }

 private:
  ProgressLine line_;
  const std::vector<std::string>* files_ = nullptr;
};

/// As in the batches of the window every file has a white balance of its own: the setting that carries the first one's
/// on counts where the command line itself has it.
bool CarriesWhiteBalance(const RunState& state) {
  return state.Told("RawSameWhiteBalance") && state.settings.raw.sameWhiteBalance != 0;
}

class ConvertRun {
 public:
  ConvertRun(const ConvertArguments& arguments, RunState& state)
      : arguments_(arguments),
        state_(state),
        settings_(options::RawConversionSettingsOf(state.settings)),
        method_(arguments.method.value_or(settings_.method)),
        developer_(rawconvert::MakeRawDeveloper()),
        answers_(arguments),
        progress_(arguments.files) {
    if (!CarriesWhiteBalance(state)) settings_.sameWhiteBalance = 0;
  }

  void Run() {
    for (const auto& given : arguments_.files) Add(given);
    for (const auto& [key, files] : runs_) {
      Convert(key.first, key.second, files);
      if (state_.stop.stop_requested()) throw platform::Cancelled();
    }
    Report();
  }

 private:
  void Add(const std::string& given) {
    const auto path = given_.Add(given);
    metadata::ExifData exif;
    const auto complaint = Complaint(path, given, exif);
    if (!complaint.empty()) {
      results_[path] = {.source = path, .message = complaint, .result = Converted::Failed};
      return;
    }
    const auto directory = arguments_.out.empty()
                               ? rawconvert::ConversionDirectory(path, options::DirectoryChoiceOf(state_.settings))
                               : platform::normaliseDirectory(arguments_.out);
    if (!results_.emplace(path, ConvertedFile{.source = path}).second) return;
    auto limits = LimitsOf(path, exif, method_, Format(), state_);
    runs_[{directory, limits.method}].push_back(path);
    remarks_[path] = std::move(limits.remark);
  }

  /// Why the file is not converted; empty, and `exif` that of the file, if it is.
  static std::string Complaint(const std::string& path, const std::string& given, metadata::ExifData& exif) {
    if (!platform::Exists(path)) return given + ": does not exist";
    if (!imagefiles::IsRawFile(path)) return given + ": is no raw file";
    exif = metadata::ExifData(path);
    if (imagefiles::CanConvertRaw(exif)) return {};
    if (exif.model.empty()) return given + ": Raw file is invalid and cannot be converted";
    return given + ": Sorry, " + exif.model + " raw conversion is not supported in this release.";
  }

  OutputFormat Format() const {
    return arguments_.format.value_or(static_cast<OutputFormat>(state_.settings.raw.convertFormat));
  }

  rawconvert::BatchConversion Batch(const std::string& directory, const std::vector<std::string>& files) {
    const metadata::ExifData first(files.front());
    auto options = options::ConversionOptionsOf(state_.settings, first, locale_, answers_);
    for (const auto& message : std::exchange(answers_.messages, {})) Complain(message);
    options.format = Format();
    if (arguments_.quality) options.quality = *arguments_.quality;
    return {.files = files,
            .outputDirectory = directory,
            .options = options,
            .appendMethodLetter = state_.settings.raw.filenameAppend != 0};
  }

  void Convert(const std::string& directory, Method method, const std::vector<std::string>& files) {
    answers_.messages.clear();
    const auto batch = Batch(directory, files);
    if (arguments_.dryRun) return Preview(batch, method);
    auto settings = SettingsFor(files.front());
    settings.method = method;
    progress_.Begin(files);
    answers_.BeginRun();
    const platform::SystemClock clock;
    for (auto& file :
         rawconvert::RunBatchConversion(batch, settings, *developer_, {answers_, progress_, clock}, state_.stop)) {
      results_[file.source] = file;
    }
    for (const auto& path : files) {
      auto& file = results_[path];
      const bool reached = file.result != Converted::Skipped || !file.output.empty();
      if (!reached) file.message = answers_.messages.empty() ? "not converted" : answers_.messages.front();
    }
  }

  /// For a run, with the develop values as far as the camera of its first file knows them.
  rawconvert::RawConversionSettings SettingsFor(const std::string& first) const {
    auto settings = settings_;
    const metadata::ExifData exif(first);
    const auto family = rawconvert::FamilyOf(first, exif);
    auto values = options::RawDialogValuesOf(state_.settings);
    const bool eos1D = family.isEos1D || family.isEos1Ds;
    rawconvert::NormaliseForDialog(settings, values, family,
                                   eos1D ? rawconvert::ConversionDialog::Eos1D : rawconvert::ConversionDialog::Other,
                                   exif);
    rawconvert::SetDevelopValues(settings, values, family);
    return settings;
  }

  void Preview(const rawconvert::BatchConversion& batch, Method method) {
    for (const auto& source : batch.files) {
      auto& result = results_[source];
      result.output = rawconvert::ConvertedPath(source, method, batch);
      const bool isSource = platform::SameFile(source, result.output);
      const bool stays = platform::Exists(result.output) && !arguments_.overwrite;
      if (!isSource && !stays) result.result = Converted::Yes;
    }
  }

  /// Why a file has no result; of one that has, what its camera could not do, if anything.
  std::string Message(const ConvertedFile& file) const {
    if (file.result == Converted::Yes) return remarks_.at(file.source);
    if (!file.message.empty()) return file.message;
    return given_.Of(file.output) + ": exists, skipped";
  }

  void Report() {
    progress_.Clear();
    auto array = Json::array();
    for (const auto& given : arguments_.files) {
      const auto& file = results_[given_.Add(given)];
      const bool ok = file.result == Converted::Yes;
      const auto message = Message(file);
      if (ok && !message.empty()) Complain(Named(given, message));
      if (!ok && !(arguments_.skip && file.result == Converted::Skipped)) state_.Fail(Named(given, message));
      const auto output = ok ? given_.Of(file.output) : std::string();
      if (!state_.json) {
        if (ok) PrintLine(Done(given, output));
        continue;
      }
      Json object;
      PutPath(object, "path", given);
      ok ? PutPath(object, "output", output) : void(object["output"] = nullptr);
      object["ok"] = ok;
      object["message"] = JsonText(message);
      array.push_back(std::move(object));
    }
    if (state_.json) PrintJson(array);
  }

  std::string Done(const std::string& given, const std::string& output) const {
    return given + ": " + (arguments_.dryRun ? "would be converted to " : "converted to ") + output;
  }

  static std::string Named(const std::string& given, const std::string& reason) {
    return reason.find(given) == std::string::npos ? given + ": " + reason : reason;
  }

  const ConvertArguments& arguments_;
  RunState& state_;
  rawconvert::RawConversionSettings settings_;
  const Method method_;  ///< that was asked for
  const std::unique_ptr<rawconvert::RawDeveloper> developer_;
  const platform::LocaleText locale_ = platform::LocaleText::FromEnvironment();
  GivenPaths given_;
  ConvertAnswers answers_;
  ConvertProgress progress_;
  /// By the directory that the files go to, and the method.
  std::map<std::pair<std::string, Method>, std::vector<std::string>> runs_;
  std::map<std::string, ConvertedFile> results_;  ///< by full path
  std::map<std::string, std::string> remarks_;    ///< by full path; see CameraLimits
};

}  // namespace

void AddConvertCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("convert", "Develop raw files and write them as pictures");
  auto arguments = std::make_shared<ConvertArguments>();
  command->add_option("files", arguments->files, "Raw files")->required();
  command->add_option("--out", arguments->out, "Directory for the pictures; made if it is missing");
  command->add_option("--format", arguments->format, "jpeg, jp2-8, jp2-16, png-8, png-16, tiff-8 or tiff-16")
      ->transform(CLI::CheckedTransformer(Formats()));
  command->add_option("--method", arguments->method, "normal, linear or combined")
      ->transform(CLI::CheckedTransformer(kMethods));
  command->add_option("--quality", arguments->quality, "Of JPEG and JPEG 2000")->check(CLI::Range(0, 100));
  auto* overwrite = command->add_flag("--overwrite", arguments->overwrite, "Replace files that exist");
  command->add_flag("--skip", arguments->skip, "Leave files that exist")->excludes(overwrite);
  command->add_flag("--dry-run", arguments->dryRun, "Only tell what would be written");
  command->callback(
      [arguments, &state] { state.action = [arguments, &state] { ConvertRun(*arguments, state).Run(); }; });
}

}  // namespace ml::cli
