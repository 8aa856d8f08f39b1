#include "imagefiles/tools/extracted_jpeg.h"

#include <array>

#include "imagefiles/edits/jpeg_edits.h"
#include "imagefiles/edits/jpeg_thumbnail.h"
#include "imagefiles/edits/jpeg_turn.h"
#include "imagefiles/edits/turned_orientation.h"
#include "imagefiles/tools/messages.h"
#include "imaging/read_whole.h"
#include "metadata/edit/edited_file.h"
#include "metadata/edit/image_data.h"
#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/edit/orientation_writer.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

using imaging::JpegTransform;
using metadata::EditedFile;

void AddNote(ExtractedJpeg& jpeg, const std::string& note) { jpeg.note += (jpeg.note.empty() ? "" : "; ") + note; }

void Keep(ExtractedJpeg& jpeg, const EditedFile& edited) {
  if (edited.Touched()) jpeg.bytes = imaging::ReadWhole(edited);
}

void TakeExif(ExtractedJpeg& jpeg, imaging::Turn turn, const ExtractedJpegWishes& wishes) try {
  const metadata::MemorySource source(jpeg.bytes);
  EditedFile edited(source);
  if (!wishes.replaceExif && metadata::FindExifSegment(edited)) return;
  TakeOverMetadata(edited, *wishes.exif, 0);
  if (turn != imaging::Turn::None) metadata::WriteOrientationToExif(edited, DegreesOf(turn));
  metadata::RequireSameImageData(edited, metadata::JpegRest);
  Keep(jpeg, edited);
} catch (const std::runtime_error& error) {  // what the camera wrote there, or a library's word on the picture
  AddNote(jpeg, tool_messages::WithoutExif(error.what()));
} catch (metadata::ExifException) {
  AddNote(jpeg, tool_messages::WithoutExif("they are damaged"));
}

void MakeUpright(ExtractedJpeg& jpeg, JpegTransform transform) try {
  const metadata::MemorySource source(jpeg.bytes);
  EditedFile edited(source);
  TurnWithoutLoss(edited, transform, [](EditedFile& turned) { RegenerateThumbnail(turned); });
  Keep(jpeg, edited);
} catch (const std::runtime_error& error) {
  AddNote(jpeg, tool_messages::NotTurned(error.what()));
}

}  // namespace

void FinishJpeg(ExtractedJpeg& jpeg, imaging::Turn turn, const ExtractedJpegWishes& wishes) {
  auto transform = imaging::TransformOf(turn);
  if (transform == JpegTransform::None) transform = TransformToUpright(metadata::MemorySource(jpeg.bytes));
  if (wishes.exif != nullptr) TakeExif(jpeg, turn, wishes);
  if (wishes.upright && transform != JpegTransform::None) MakeUpright(jpeg, transform);
}

bool IsCutShort(const std::vector<std::byte>& jpeg) {
  constexpr std::array kEnd{std::byte{0xff}, std::byte{0xd9}};
  const metadata::MemorySource source(jpeg);
  std::vector<metadata::FileRange> picture;
  try {
    picture = metadata::JpegImageData(source);
  } catch (const platform::UserError&) {
    return true;
  }
  const auto begin = jpeg.begin() + static_cast<std::ptrdiff_t>(picture.front().position);
  return std::search(begin, jpeg.end(), kEnd.begin(), kEnd.end()) == jpeg.end();
}

}  // namespace ml::imagefiles
