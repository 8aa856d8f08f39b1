#include "imagefiles/edits/developed_jpegs.h"

#include <algorithm>
#include <utility>

#include "imagefiles/edits/jpeg_edits.h"
#include "imagefiles/eos1d_test.h"
#include "imagefiles/messages.h"
#include "imaging/jpeg/jpeg_encoder.h"
#include "imaging/scale.h"
#include "metadata/ciff.h"
#include "metadata/edit/apply_edit.h"
#include "metadata/edit/ciff_file.h"
#include "metadata/edit/orientation_writer.h"
#include "metadata/exif_block.h"
#include "metadata/tiff_raw.h"
#include "platform/atomic_file.h"
#include "platform/errors.h"
#include "platform/paths.h"

namespace ml::imagefiles {
namespace {

using platform::UserError;

std::vector<std::byte> Encode(const imaging::PixelBuffer& picture, int quality, const std::string& path) {
  try {
    return imaging::EncodeBareJpeg(picture, quality);
  } catch (const platform::LibraryError& error) {
    throw UserError(messages::UnableToRead(path, error.what()));
  }
}

imaging::PixelBuffer AtMost(imaging::PixelBuffer picture, int width) {
  if (width <= 0 || picture.width <= width) return picture;
  const auto height = static_cast<long long>(picture.height) * width / picture.width;
  return imaging::ScaleAverage(picture, width, static_cast<int>(std::max(height, 1LL)));
}

/// Throws UserError unless the sensor data are what they were.
void RequireSameRawData(const metadata::ByteSource& before, const metadata::ByteSource& after,
                        const std::string& path) {
  const auto old = metadata::CiffFile(before).FindEntry(metadata::ciff_tag::kRawData);
  const auto now = metadata::CiffFile(after).FindEntry(metadata::ciff_tag::kRawData);
  const bool same = old.has_value() == now.has_value() && (!old || metadata::SameBytes(before, *old, after, *now));
  if (!same) throw UserError(messages::DamagedForEdit(path));
}

void CopyOut(const metadata::ByteSource& from, platform::AtomicFile& to) {
  constexpr std::size_t piece = 1 << 20;
  for (std::uint64_t at = 0; at < from.Size(); at += piece) to.Write(from.ReadUpTo(at, piece));
}

}  // namespace

void RegenerateEmbeddedJpeg(ImageFile& file, const EmbeddedJpegSettings& settings, DevelopLibrary* library,
                            const EditTools& tools) {
  if (file.Row().format != Format::Crw) throw UserError(messages::NotDevelopable(file.Path()));
  if (!file.MakeWritable()) throw UserError(std::string(messages::kEmbeddedReadOnly));
  if (library == nullptr) throw UserError(messages::NoDevelopment(file.Path()));
  const platform::ReadableFile crw(file.Path(), *tools.edit.fileSystem);
  const metadata::FileSource source(crw);
  const metadata::CiffFile ciff(source);  // a file that cannot be rewritten need not be developed
  const auto jpeg = Encode(AtMost(library->Develop(file.Path()), settings.width), settings.quality, file.Path());
  metadata::EditedFile edited(source);
  ciff.Write(edited, {.preview = std::span(jpeg)});
  file.Wrote();
  metadata::ApplyEdit(crw, edited, tools.edit,
                      [&](const metadata::ByteSource& result) { RequireSameRawData(source, result, file.Path()); });
}

std::string MakeViewingJpeg(const std::string& path, const ViewingJpegSettings& settings, DevelopLibrary* library,
                            const EditTools& tools) {
  if (!IsEos1DRawFile(path)) throw UserError(messages::NotDevelopable(path));
  if (library == nullptr) throw UserError(messages::NoDevelopment(path));
  const metadata::ExifData exif(path, tools.options.ForExif());
  auto picture = library->Develop(path);
  const int width = settings.half ? std::max(picture.width / 2, 1) : 0;
  const auto pixels = Encode(AtMost(std::move(picture), width), settings.quality, path);
  const metadata::MemorySource source(pixels);
  metadata::EditedFile jpeg(source);
  TakeOverMetadata(jpeg, exif, 0);
  const auto orientation = static_cast<std::uint32_t>(std::max(exif.orientation, 0));
  metadata::WriteOrientationToExif(jpeg, metadata::DegreesOfOrientation(orientation).value_or(0));
  auto target = platform::WithExtension(path, ".jpg");
  platform::AtomicFile out(target, {.existing = platform::ExistingFile::Refuse,
                                    .recorder = tools.edit.recorder,
                                    .stateDirectory = tools.edit.stateDirectory,
                                    .fileSystem = tools.edit.fileSystem});
  CopyOut(jpeg, out);
  out.Commit();
  return target;
}

}  // namespace ml::imagefiles
