#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/edit_session.h"
#include "cli/given_image.h"
#include "cli/run_state.h"

namespace ml::cli {

/// What became of one image.
struct EditOutcome {
  bool changed = false;                 ///< or would be, in a dry run
  std::string note = {};                ///< what else is to be said; empty if that is all
  std::vector<std::string> files = {};  ///< for commands that tell files: as the user would name them
};

/// Files given together with an image that takes them along.
enum class GivenCompanions { GoWithImage, AreEditedThemselves };
/// Whether results have the list "files".
enum class ResultFiles { Told, NotTold };

/// A command that changes images one by one.
struct EditCommand {
  std::string what;  ///< its name in the journal
  std::string done;  ///< "turned": what people read of an image that was changed
  bool dryRun = false;
  GivenCompanions companions = GivenCompanions::GoWithImage;
  ResultFiles files = ResultFiles::NotTold;
  int threads = 1;  ///< on which images are edited at once
  /// Does the whole of one image, or all but write in a dry run. Throws UserError, or Cancelled.
  std::function<EditOutcome(const GivenImage& image, ImageSession& session)> edit;
};

/// Runs the command over what the user named and tells of each: a line, or an object of the array that ends the run.
/// One that fails does not keep the others; a file named twice is changed once. All can be undone as one. Throws
/// Cancelled after a stop request.
void RunEdits(const std::vector<std::string>& files, const EditCommand& command, RunState& state);

}  // namespace ml::cli
