#pragma once

/// Sentences of this module that users read. A path follows where a sentence ends in a line break, then, on
/// a line of its own, the reason the system gave.
namespace ml::platform::messages {

inline constexpr char kUnableToRead[] = "Unable to read file:\n";
inline constexpr char kUnableToWrite[] = "Unable to write file:\n";
inline constexpr char kUnableToWriteDirectory[] = "Unable to write to directory:\n";
inline constexpr char kNotARegularFile[] = "Not a regular file:\n";
inline constexpr char kTooLarge[] = "File is too large:\n";
inline constexpr char kReadOnly[] = "File is read-only:\n";
inline constexpr char kAlreadyExists[] = "File already exists:\n";
inline constexpr char kChangedMeanwhile[] = "File was changed by another program, nothing was written:\n";
inline constexpr char kPatchNotRevoked[] = "Writing failed half-way, the file may be damaged:\n";
inline constexpr char kFinishedAtNextStart[] = "Writing was interrupted and will be finished at the next start:\n";
inline constexpr char kOverwriteFinished[] = "A change that was cut off has been finished:\n";
inline constexpr char kOverwriteKeptBeside[] =
    "A change that was cut off is kept beside its file, which has changed since:\n";
inline constexpr char kUnableToRename[] = "Unable to rename file:\n";
inline constexpr char kUnableToChangeStatus[] = "Unable to set time or permissions of file:\n";
inline constexpr char kUnableToStart[] = "Unable to start program:\n";
inline constexpr char kNoClosingQuotes[] = "Invalid command line - no closing quotes:\n";
inline constexpr char kUnableToFindHelp[] = "Unable to find HTML help file:\n";
inline constexpr char kUnableToTrash[] = "Unable to move to the trash:\n";

// Also said by the modules above. "Is not a directory" follows its path.

inline constexpr char kIsNotADirectory[] = "\nis not a directory";
inline constexpr char kOutputIsNoDirectory[] = "Specified output directory exists but is not a directory:\n";
inline constexpr char kErrorCreatingDirectory[] = "Error creating directory:\n";

inline constexpr char kNothingToUndo[] = "There is nothing to undo";
inline constexpr char kNotUndoable[] = "This cannot be undone: ";
inline constexpr char kStillRunning[] = "This is still in progress: ";
inline constexpr char kChangedSince[] = "Unable to undo, file was changed since:\n";
inline constexpr char kOldContentLost[] = "Unable to undo, the old content was not kept:\n";
inline constexpr char kUnableToRemove[] = "Unable to remove file:\n";
inline constexpr char kUndoTooLarge[] = "too large to be kept for undo";

}  // namespace ml::platform::messages
