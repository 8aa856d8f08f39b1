#include "imagefiles/edits/tiff_edits.h"

#include <ctime>

#include "imagefiles/edits/tiff_file_edit.h"
#include "imagefiles/edits/turned_orientation.h"
#include "imagefiles/messages.h"
#include "metadata/edit/exif_dates_writer.h"
#include "metadata/edit/ifd_entry_writer.h"
#include "metadata/edit/iptc_tiff.h"
#include "metadata/edit/tiff_comment.h"
#include "metadata/exif_reader.h"
#include "metadata/iptc/iptc_caption.h"
#include "metadata/tiff_tags.h"
#include "platform/dates.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

using metadata::EditedFile;
using platform::UserError;

using metadata::tiff_tag::kOrientation;

metadata::TiffMagic MagicOf(const ImageFile& file) {
  return file.Row().format == Format::Orf ? metadata::TiffMagic::Any : metadata::TiffMagic::Required;
}

/// What stands in the file that is being edited: the handler may have looked at it long before.
metadata::ExifData ReadAgain(const ImageFile& file, const EditedFile& edited, std::uint64_t base) {
  metadata::ExifData read;
  metadata::ReadTiffFile(read, edited, base, MagicOf(file));
  return read;
}

/// Throws UserError.
void WriteCaption(EditedFile& edited, const metadata::ExifData& read, const std::string& text) try {
  metadata::WriteTiffIptc(edited, metadata::WithCaption(read, text));
} catch (metadata::ExifException) {
  throw UserError(messages::kCaptionFailed);
}

std::uint32_t NewOrientation(const ImageFile& file, const EditedFile& edited, std::uint64_t base, imaging::Turn turn) {
  return TurnedOrientation(metadata::ReadTiffOrientation(edited, base, MagicOf(file)).value_or(1), turn);
}

}  // namespace

void SetTiffComment(ImageFile& file, const std::string& text, const EditTools& tools) {
  const bool wantsCaption = tools.options.iptcComments && file.Row().iptcHome == IptcHome::TiffTag;
  const auto edit = [&](EditedFile& edited, std::uint64_t base) {
    const auto read = ReadAgain(file, edited, base);
    const bool inField = metadata::WriteTiffComment(edited, read, text);
    if (wantsCaption) return WriteCaption(edited, read, text);
    if (!inField) throw UserError(std::string(messages::kNoTiffComment));
  };
  EditTiffFile(file, edit, tools);
}

void WriteIptcToTiff(ImageFile& file, const metadata::IptcBlock& block, const EditTools& tools) {
  EditTiffFile(
      file, [&](EditedFile& edited, std::uint64_t) { metadata::WriteTiffIptc(edited, block); }, tools);
}

void AdjustTiffDates(ImageFile& file, std::int64_t seconds, const EditTools& tools) {
  const auto text = platform::ExifDateText(static_cast<std::time_t>(file.Exif().shootingTime + seconds));
  const auto edit = [&](EditedFile& edited, std::uint64_t base) { metadata::WriteExifDates(edited, base, text); };
  EditTiffFile(file, edit, tools);
}

void RotateByTag(ImageFile& file, imaging::Turn turn, const EditTools& tools) {
  const auto edit = [&](EditedFile& edited, std::uint64_t base) {
    const auto value = NewOrientation(file, edited, base, turn);
    metadata::UpdateIfdEntry(edited, {.tag = kOrientation, .value = value}, MagicOf(file));
  };
  EditTiffFile(file, edit, tools);
}

void RotateByPresentTag(ImageFile& file, imaging::Turn turn, const EditTools& tools) {
  const auto edit = [&](EditedFile& edited, std::uint64_t base) {
    metadata::OverwriteIfdNumber(edited, base, kOrientation, NewOrientation(file, edited, base, turn));
  };
  EditTiffFile(file, edit, tools);
}

}  // namespace ml::imagefiles
