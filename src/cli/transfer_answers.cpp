#include "cli/transfer_answers.h"

#include <algorithm>

#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::cli {

using platform::FileExistsAnswer;
using platform::UserError;

void TransferAnswers::Begin(const platform::CompanionSet& image) {
  image_ = image;
  note_.clear();
}

bool TransferAnswers::Made(const std::vector<std::string>& files) {
  const auto twice = std::ranges::find_if(files, [&](const auto& file) { return made_.contains(file); });
  // Only a dry run comes here: else the file is there, and was asked for.
  if (twice != files.end() && options_.dryRun && !options_.rename) {
    return fileExists(*twice) != FileExistsAnswer::Skip;
  }
  made_.insert(files.begin(), files.end());
  return true;
}

platform::Button TransferAnswers::ask(const platform::MessageBox&) {
  return mayCreate_ ? platform::Button::Yes : platform::Button::No;
}

bool TransferAnswers::IsFree(const std::string& directoryAndStem) const {
  return std::ranges::none_of(image_.Paths(), [&](const auto& file) {
    const auto path = directoryAndStem + std::string(platform::SplitPath(file).extension);
    return made_.contains(path) || platform::IsNameTaken(path);
  });
}

/// "name.crw" -> "name (2).crw" and so on, the first that is free for the image and all that goes with it.
std::optional<std::string> TransferAnswers::saveAs(const SaveAsQuestion& question) {
  const auto parts = platform::SplitPath(question.start);
  for (int n = 2;; ++n) {
    const auto name = std::string(parts.directory) + std::string(parts.stem) + " (" + std::to_string(n) + ")";
    if (IsFree(name)) return name + std::string(parts.extension);
  }
}

FileExistsAnswer TransferAnswers::fileExists(const std::string& path) {
  const bool isImage = platform::SplitPath(path).extension == platform::SplitPath(image_.file).extension;
  if (options_.rename && isImage) return FileExistsAnswer::SaveAs;
  if (options_.rename) {
    throw UserError(path + ": exists, and is to go with its image, not replaced; choose --overwrite or --skip");
  }
  if (options_.skip) {
    note_ += (note_.empty() ? "" : "; ") + path + ": exists, skipped";
    return FileExistsAnswer::Skip;
  }
  if (made_.contains(path)) throw UserError(path + ": was made earlier in this run, not replaced; choose --rename");
  if (options_.overwrite) return FileExistsAnswer::Overwrite;
  throw UserError(path + ": exists, not replaced; choose --overwrite, --skip or --rename");
}

}  // namespace ml::cli
