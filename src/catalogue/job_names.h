#pragma once

/// What commands that change files are called in the journal, which window and command line share, so that Undo tells
/// of both alike; the window also shows them over the progress.
namespace ml::catalogue {

inline constexpr char kCopyJob[] = "Copy Images", kMoveJob[] = "Move Images", kDeleteJob[] = "Delete";
inline constexpr char kRenameJob[] = "Rename Image", kBatchRenameJob[] = "Batch Rename", kTimestampJob[] = "Timestamp";

inline constexpr char kRotateJob[] = "Rotate Image", kAutoRotateJob[] = "Auto Rotate JPEG Images";
inline constexpr char kCommentJob[] = "Edit Comments", kIptcJob[] = "Edit IPTC Data";
inline constexpr char kAdjustDateJob[] = "Adjust Image Date/Time", kEmbedJob[] = "Embed Color Profile";
inline constexpr char kThumbnailJob[] = "Regenerate JPEG Thumbnails", kRegenerateJob[] = "Regenerate embedded JPEGs";

}  // namespace ml::catalogue
