#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/job_names.h"
#include "cli/commands.h"
#include "cli/edit_session.h"
#include "cli/output.h"
#include "cli/run_state.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::cli {
namespace {

struct CommentArguments {
  std::vector<std::string> files;
  std::optional<std::string> text;
  bool dryRun = false;
};

/// The comment that the file has in the end.
std::string SetAndGet(const std::string& path, const CommentArguments& arguments, const EditSession& session) {
  const auto file = OpenImage(path, session.Tools());
  if (!arguments.text) return file->GetComment();
  if (!arguments.dryRun) {
    SetComment(*file, *arguments.text, session.Tools());
    return OpenImage(path, session.Tools())->GetComment();
  }
  const auto refusal = file->Row().commentRefusal;
  if (!refusal.empty()) throw platform::UserError(std::string(refusal));
  return *arguments.text;
}

Json CommentOf(const std::string& given, const CommentArguments& arguments, const EditSession& session,
               RunState& state) {
  Json object;
  PutPath(object, "path", given);
  std::string comment, message;
  try {
    comment = SetAndGet(platform::AbsolutePath(given), arguments, session);
    if (!state.json) PrintLine(arguments.files.size() > 1 ? given + ": " + comment : comment);
  } catch (const platform::UserError& error) {
    message = error.what();
    state.Fail(message.find(given) == std::string::npos ? given + ": " + message : message);
  }
  object["comment"] = JsonText(comment);
  object["ok"] = message.empty();
  object["message"] = JsonText(message);
  return object;
}

void RunComment(const CommentArguments& arguments, RunState& state) {
  auto result = Json::array();
  EditSession session(catalogue::kCommentJob, state);
  for (const auto& given : arguments.files) {
    if (state.stop.stop_requested()) break;
    result.push_back(CommentOf(given, arguments, session, state));
  }
  session.Finish();
  if (state.json) PrintJson(result);
  if (state.stop.stop_requested()) throw platform::Cancelled();
}

}  // namespace

void AddCommentCommand(CLI::App& program, RunState& state) {
  auto* command = program.add_subcommand("comment", "Show or set the comments of images");
  auto arguments = std::make_shared<CommentArguments>();
  command->add_option("files", arguments->files, "Images")->required();
  command->add_option("--set", arguments->text, "The new comment; an empty one takes it away");
  command->add_flag("--dry-run", arguments->dryRun, "Write nothing");
  command->callback([arguments, &state] { state.action = [arguments, &state] { RunComment(*arguments, state); }; });
}

}  // namespace ml::cli
