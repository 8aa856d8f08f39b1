#include "imagefiles/raw_pictures.h"

#include <algorithm>
#include <optional>

#include "imagefiles/messages.h"
#include "imagefiles/turned_jpeg.h"
#include "imaging/raw/raw_preview.h"
#include "metadata/crw_file.h"
#include "metadata/tiff_raw.h"
#include "platform/companion_set.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

using imaging::Turn;
using metadata::ByteSource;
using metadata::FileRange;
using metadata::TiffMagic;
using platform::LibraryError;

Turn CrwTurn(const ByteSource& file) {
  try {
    return TurnOfDegrees(metadata::ReadCrwBasics(file).rotation.value_or(0));
  } catch (const platform::UserError&) {
    return Turn::None;  // the picture may be whole all the same
  }
}

template <std::uint64_t base, TiffMagic magic = TiffMagic::Required>
Turn TiffTurn(const ByteSource& file) {
  return TurnOfOrientation(metadata::ReadTiffOrientation(file, base, magic).value_or(1));
}

Turn RafTurn(const ByteSource& file) {
  return TurnOfOrientation(metadata::ReadTiffOrientation(file, metadata::FindRafTiffBase(file)).value_or(1));
}

/// Where a format keeps its preview and the turn.
struct RawRow {
  Format format;
  std::optional<FileRange> (*findPreview)(const ByteSource&);
  Turn (*turn)(const ByteSource&);
};
constexpr RawRow kRawRows[] = {
    {Format::Crw, metadata::FindCrwPreview, CrwTurn},
    {Format::Eos1DRaw, metadata::FindPefPreview, TiffTurn<0>},  // somewhere in the directories, if at all
    {Format::Nef, metadata::FindNefPreview, TiffTurn<0>},
    {Format::Mrw, metadata::FindMrwPreview, TiffTurn<metadata::kMrwTiffBase>},
    {Format::Orf, metadata::FindOrfPreview, TiffTurn<0, TiffMagic::Any>},
    {Format::Raf, metadata::FindRafPreview, RafTurn},
    {Format::Pef, metadata::FindPefPreview, TiffTurn<0>},
};

const RawRow& RawRowOf(Format format) { return *std::ranges::find(kRawRows, format, &RawRow::format); }

/// Whether an embedded preview is good enough not to look for a better picture.
bool Serves(const Picture& preview, const PictureRequest& request) {
  const auto& decoded = preview.decoded;
  return !decoded.damaged && std::max(decoded.fullWidth, decoded.fullHeight) >= request.smallestPreview;
}

std::optional<Picture> ReadPreview(const FileRange& range, const PictureRequest& request, Turn turn) {
  try {
    return Picture{DecodeTurnedJpeg(request.file, {range.position, turn}, request.SmallJpegScale(turn)),
                   PictureSource::Embedded};
  } catch (const LibraryError&) {
    return std::nullopt;
  }
}

Picture Develop(const PictureRequest& request, Turn turn) {
  auto decoded = imaging::DecodeRawPreview(request.file);
  decoded.fullWidth = decoded.pixels.width;
  decoded.fullHeight = decoded.pixels.height;
  return {TurnPicture(std::move(decoded), turn)};
}

std::string FindViewingJpeg(const PictureRequest& request) {
  if (request.companions != nullptr) return request.companions->jpg;
  return platform::FindCompanion(request.path, ".jpg");
}

std::optional<Picture> ReadViewingJpeg(const PictureRequest& request) {
  const auto path = FindViewingJpeg(request);
  const auto jpeg = path.empty() ? std::nullopt : platform::OpenIfReadable(path);
  if (!jpeg) return std::nullopt;
  try {
    const metadata::FileSource source(*jpeg);
    const auto turn = RecordedTurn(source);
    return Picture{DecodeTurnedJpeg(source, {.turn = turn}, request.SmallJpegScale(turn)), PictureSource::Viewing};
  } catch (const LibraryError&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<FileRange> FindRawJpeg(Format format, const ByteSource& file) {
  return RawRowOf(format).findPreview(file);
}

Turn RawTurn(Format format, const ByteSource& file) { return RawRowOf(format).turn(file); }

Picture ReadRawPicture(Format format, const PictureRequest& request) {
  const auto& row = RawRowOf(format);
  const auto turn = row.turn(request.file);
  const auto range = row.findPreview(request.file);
  auto preview = range ? ReadPreview(*range, request, turn) : std::nullopt;
  if (preview && Serves(*preview, request)) return *std::move(preview);
  try {
    auto developed = Develop(request, turn);
    if (!preview || !developed.decoded.damaged) return developed;
  } catch (const LibraryError& error) {
    if (range && !preview) throw LibraryError(messages::kEmbeddedJpeg, error.what());
    if (!preview) throw;
  }
  return *std::move(preview);
}

Picture ReadEos1DPicture(const PictureRequest& request) {
  auto viewing = request.options.bindJpegToEos1DRaw ? ReadViewingJpeg(request) : std::nullopt;
  return viewing ? *std::move(viewing) : ReadRawPicture(Format::Eos1DRaw, request);
}

}  // namespace ml::imagefiles
