#include "imagefiles/edits/jpeg_turn.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "imagefiles/edits/jpeg_thumbnail.h"
#include "imagefiles/edits/turned_orientation.h"
#include "imagefiles/messages.h"
#include "imaging/jpeg/jpeg_decoder.h"
#include "imaging/read_whole.h"
#include "metadata/edit/apply_edit.h"
#include "metadata/edit/exif_entry_places.h"
#include "metadata/edit/orientation_writer.h"
#include "metadata/jpeg_layout.h"
#include "metadata/jpeg_segments.h"
#include "metadata/jpeg_size.h"
#include "metadata/tiff_tags.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

using imaging::JpegTransform;
using metadata::EditedFile;
using metadata::ExifDirectory;
using Bytes = std::vector<std::byte>;

namespace tag = metadata::tiff_tag;

/// Measures of the sides: of the picture in the first and in the EXIF directory, and the resolutions.
struct SidePair {
  ExifDirectory directory = ExifDirectory::First;
  std::uint16_t first = 0, second = 0;
};
constexpr SidePair kSidePairs[] = {{ExifDirectory::Exif, tag::kPixelWidth, tag::kPixelHeight},
                                   {ExifDirectory::First, tag::kWidth, tag::kHeight},
                                   {ExifDirectory::First, tag::kXResolution, tag::kYResolution}};
constexpr std::uint16_t kSideTags[] = {tag::kPixelWidth, tag::kPixelHeight, tag::kWidth,
                                       tag::kHeight,     tag::kXResolution, tag::kYResolution};

constexpr std::string_view kJfif{"JFIF\0", 5};
constexpr std::uint32_t kJfifDensity = 8, kDensitySize = 2;  ///< across, then down

void SwapSideEntries(EditedFile& jpeg) {
  const auto places = metadata::FindExifEntries(jpeg, kSideTags);
  for (const auto& pair : kSidePairs) {
    for (const auto& place : places) {
      if (place.entry.tag != pair.first || place.directory != pair.directory) continue;
      const auto other = std::ranges::find_if(places, [&](const auto& p) {
        return p.entry.tag == pair.second && p.directory == pair.directory && p.block == place.block;
      });
      if (other != places.end()) SwapEntries(jpeg, place, *other);
    }
  }
}

void SwapJfifDensities(EditedFile& jpeg) {
  metadata::JpegSegments segments(jpeg);
  while (const auto segment = segments.Next()) {
    if (segment->marker != metadata::jpeg_marker::kApp0 || segment->payloadSize < kJfifDensity + 2 * kDensitySize ||
        !segments.PayloadStartsWith(*segment, kJfif)) {
      continue;
    }
    const auto at = segment->payload + kJfifDensity;
    const auto across = jpeg.Read(at, kDensitySize), down = jpeg.Read(at + kDensitySize, kDensitySize);
    if (across == down) continue;
    jpeg.Overwrite(at, down);
    jpeg.Overwrite(at + kDensitySize, across);
  }
}

/// The new picture without the segments that the library put before it.
void AddPicture(Bytes& out, const Bytes& turned) {
  std::size_t at = 2;  // behind the start of image
  const auto add = [&](std::size_t end) {
    out.insert(out.end(), turned.begin() + static_cast<std::ptrdiff_t>(at),
               turned.begin() + static_cast<std::ptrdiff_t>(end));
  };
  for (const auto& [position, size] : metadata::ReadJpegLayout(turned).applications) {
    add(position);
    at = position + size;
  }
  add(turned.size());
}

/// Throws UserError unless the file now shows a whole picture with the sides that it must have.
void CheckTurned(const metadata::ByteSource& edited, int width, int height, const std::string& path) {
  const auto picture = imaging::DecodeJpeg(
      edited, 0, [](int, int) { return 1; }, imaging::PixelOrder::Rgb);
  if (picture.damaged || picture.fullWidth != width || picture.fullHeight != height) {
    throw platform::UserError(messages::UnableToTurn(path, "The turned picture is not what it should be"));
  }
}

/// As an edit of the file at `path`, with the library's words told as a sentence.
void TurnFile(const std::string& path, JpegTransform transform, const EditTools& tools) {
  try {
    int width = 0, height = 0;
    const auto turn = [&](EditedFile& jpeg) {
      TurnWithoutLoss(jpeg, transform, [](metadata::EditedFile& turned) { RegenerateThumbnail(turned); });
      const auto size = metadata::ReadJpegSize(jpeg.Original()).value_or(metadata::JpegSize{});
      width = imaging::SwapsSides(transform) ? size.height : size.width;
      height = imaging::SwapsSides(transform) ? size.width : size.height;
    };
    const auto check = [&](const metadata::ByteSource& edited) { CheckTurned(edited, width, height, path); };
    metadata::EditFile(path, turn, tools.edit, check);
  } catch (const platform::LibraryError& error) {
    throw platform::UserError(messages::UnableToTurn(path, error.what()));
  }
}

}  // namespace

JpegTransform TransformToUpright(const metadata::ByteSource& jpeg) {
  constexpr JpegTransform kTransforms[] = {
      JpegTransform::None, JpegTransform::None,         JpegTransform::FlipHorizontal,
      JpegTransform::half, JpegTransform::FlipVertical, JpegTransform::Transpose,
      JpegTransform::cw90, JpegTransform::Transverse,   JpegTransform::cw270};
  const auto place = metadata::FindShownOrientation(jpeg);
  const auto orientation = place ? NumberIn(*place) : 0;
  return orientation < std::size(kTransforms) ? kTransforms[orientation] : JpegTransform::None;
}

bool TurnByOrientation(EditedFile& jpeg, imaging::Turn turn) {
  const auto place = metadata::FindShownOrientation(jpeg);
  if (place) OverwriteNumber(jpeg, *place, TurnedOrientation(NumberIn(*place), turn));
  return place.has_value();
}

void TurnWithoutLoss(EditedFile& jpeg, JpegTransform transform, const ThumbnailWriter& regenerate) {
  const auto old = imaging::ReadWhole(jpeg);
  const auto turned = imaging::TransformJpeg(old, transform);
  const auto layout = metadata::ReadJpegLayout(old);
  // The segments at the front stay where they are; later ones are gathered behind them.
  std::uint64_t front = 2;
  Bytes rest;
  for (const auto& [position, size] : layout.applications) {
    if (position == front) {
      front += size;
    } else {
      const auto segment = std::span(old).subspan(position, size);
      rest.insert(rest.end(), segment.begin(), segment.end());
    }
  }
  AddPicture(rest, turned);
  jpeg.Replace({front, layout.end - front}, rest);
  if (imaging::SwapsSides(transform)) {
    SwapSideEntries(jpeg);
    SwapJfifDensities(jpeg);
  }
  metadata::MakeUpright(jpeg);
  if (regenerate) regenerate(jpeg);
}

void RotateJpeg(ImageFile& file, imaging::Turn turn, const EditTools& tools) {
  if (turn == imaging::Turn::None) return;
  if (tools.options.useJpegExifOrientation) {
    bool done = false;
    metadata::EditFile(
        file.Path(), [&](EditedFile& jpeg) { done = TurnByOrientation(jpeg, turn); }, tools.edit);
    if (done) return;
  }
  TurnFile(file.Path(), imaging::TransformOf(turn), tools);
}

bool AutoRotate(ImageFile& file, const EditTools& tools) {
  if (file.Row().format != Format::Jpeg) return false;
  const auto transform = [&] {
    const platform::ReadableFile jpeg(file.Path(), *tools.edit.fileSystem);
    return TransformToUpright(metadata::FileSource(jpeg));
  }();
  if (transform == JpegTransform::None) return false;
  if (!file.MakeWritable()) throw platform::UserError(std::string(messages::kRotateReadOnly));
  file.Wrote();
  TurnFile(file.Path(), transform, tools);
  return true;
}

}  // namespace ml::imagefiles
