#pragma once

namespace CLI {
class App;
}

namespace ml::cli {

struct RunState;

/// Each adds one command with its options to `program`. When the command was given, `state.action` is set to
/// what it does; `state` outlives the parsing.
void AddSettingsCommand(CLI::App& program, RunState& state);
void AddListCommand(CLI::App& program, RunState& state);
void AddOrderCommand(CLI::App& program, RunState& state);
void AddTagsCommand(CLI::App& program, RunState& state);
void AddInfoCommand(CLI::App& program, RunState& state);
void AddIptcCommand(CLI::App& program, RunState& state);
void AddCommentCommand(CLI::App& program, RunState& state);
void AddTextCommand(CLI::App& program, RunState& state);
void AddExpandCommand(CLI::App& program, RunState& state);
void AddThumbCommand(CLI::App& program, RunState& state);
void AddPreviewCommand(CLI::App& program, RunState& state);
void AddHistogramCommand(CLI::App& program, RunState& state);
void AddRawCommand(CLI::App& program, RunState& state);
void AddRegenerateJpegCommand(CLI::App& program, RunState& state);
void AddRotateCommand(CLI::App& program, RunState& state);
void AddAdjustTimeCommand(CLI::App& program, RunState& state);
void AddTimestampCommand(CLI::App& program, RunState& state);
void AddThumbnailCommand(CLI::App& program, RunState& state);
void AddEmbedProfileCommand(CLI::App& program, RunState& state);
void AddCopyCommand(CLI::App& program, RunState& state);
void AddMoveCommand(CLI::App& program, RunState& state);
void AddRenameCommand(CLI::App& program, RunState& state);
void AddDeleteCommand(CLI::App& program, RunState& state);
void AddConvertCommand(CLI::App& program, RunState& state);
void AddCopyExifCommand(CLI::App& program, RunState& state);
void AddExportExifCommand(CLI::App& program, RunState& state);
void AddExtractJpegCommand(CLI::App& program, RunState& state);
void AddUndoCommand(CLI::App& program, RunState& state);

}  // namespace ml::cli
