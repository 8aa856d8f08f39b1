#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "cli/output_file.h"
#include "cli/unattended_answers.h"
#include "platform/companion_set.h"

namespace ml::cli {

/// Answers by the options what copying and moving asks. Where they say nothing an image stays where it is, and so it
/// does where it would replace a file that this run has made.
class TransferAnswers final : public UnattendedAnswers {
 public:
  /// Does not own `options`.
  TransferAnswers(const ExistingFileOptions& options, bool mayCreate) : options_(options), mayCreate_(mayCreate) {}

  /// The image that is asked for from now on, with its companions.
  void Begin(const platform::CompanionSet& image);
  /// Takes note of where the image and its companions went, or would go. Gives false if something made earlier is in
  /// the way of one of them and that is skipped; throws UserError if it is not to be.
  bool Made(const std::vector<std::string>& files);
  /// What was skipped since Begin(); empty if nothing was.
  const std::string& Note() const { return note_; }

  platform::Button ask(const platform::MessageBox&) override;
  std::optional<std::string> saveAs(const SaveAsQuestion& question) override;
  platform::FileExistsAnswer fileExists(const std::string& path) override;

 private:
  bool IsFree(const std::string& directoryAndStem) const;

  const ExistingFileOptions& options_;
  const bool mayCreate_;
  platform::CompanionSet image_;
  std::string note_;
  std::unordered_set<std::string> made_;
};

}  // namespace ml::cli
