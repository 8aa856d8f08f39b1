#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/run_state.h"
#include "cli/unattended_answers.h"
#include "imagefiles/edits/image_edits.h"
#include "imagefiles/tools/tool_run.h"

namespace ml::cli {

/// Answers by the options what the tools ask. Where they say nothing, nothing is changed.
class ToolAnswers final : public UnattendedAnswers {
 public:
  bool yes = false, overwrite = false;

  platform::Button ask(const platform::MessageBox&) override;
  platform::FileExistsAnswer fileExists(const std::string&) override;
};

/// A tool that works on many images.
struct ToolCommand {
  std::string what;  ///< its name in the journal
  std::string done;  ///< "copied to": what stands before the output of an image that was done
  bool dryRun = false;
  std::string place = {};      ///< the directory or file of its outputs, as the user named it; empty: beside the images
  bool keepingIsFine = false;  ///< the user said that files may stay as they are
  std::function<imagefiles::ToolReport(const std::vector<std::string>& images, const imagefiles::EditTools& tools,
                                       const imagefiles::ToolRun& run)>
      run;
};

/// Runs the tool over what the user named, each image once, and tells of each: a line, or an object of the array that
/// ends the run. An image that fails does not keep the others. All can be undone as one. Throws UserError, and
/// Cancelled after a stop request.
void RunTool(const std::vector<std::string>& files, const ToolCommand& command, ToolAnswers& answers, RunState& state);

}  // namespace ml::cli
