#pragma once

#include "imagefiles/edits/image_edits.h"

/// How each format is written to: functions that may take for granted that the file can be written and that its row
/// does not refuse the edit. They say nothing to the handler. Null where the format has nothing to write.
namespace ml::imagefiles {

struct FormatEdits {
  Format format = Format::Jpeg;
  void (*rotate)(ImageFile& file, imaging::Turn turn, const EditTools& tools) = nullptr;
  void (*setComment)(ImageFile& file, const std::string& text, const EditTools& tools) = nullptr;
  void (*writeIptc)(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools) = nullptr;
  /// `seconds` is added to the shooting time, which is known to come from a recorded date.
  void (*adjustDateTime)(ImageFile& file, std::int64_t seconds, const EditTools& tools) = nullptr;
};

const FormatEdits& EditsOf(Format format);

}  // namespace ml::imagefiles
