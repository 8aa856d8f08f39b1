#include "imagefiles/picture_reader.h"

#include <algorithm>
#include <optional>

#include "imagefiles/messages.h"
#include "imagefiles/raw_pictures.h"
#include "imagefiles/thm_file.h"
#include "imagefiles/turned_jpeg.h"
#include "imaging/dib/dib_decoder.h"
#include "imaging/jp2/jp2_decoder.h"
#include "imaging/magick/magick_decoder.h"
#include "imaging/png/png_decoder.h"
#include "imaging/psd/psd_decoder.h"
#include "imaging/scale.h"
#include "imaging/tiff/uncompressed_tiff.h"
#include "metadata/riff.h"
#include "platform/errors.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

using imaging::MagickFormat;
using platform::LibraryError;

Picture ReadJpeg(const PictureRequest& request) {
  const auto turn = JpegTurn(request.file, request.options);
  return {DecodeTurnedJpeg(request.file, {.turn = turn}, ScaleToCover(request.wanted, turn))};
}

Picture ReadJp2(const PictureRequest& request) {
  imaging::Jp2Options options;
  options.threads = request.threads;
  return {imaging::DecodeJp2(request.file, request.wanted, options)};
}

template <MagickFormat format>
Picture ReadMagick(const PictureRequest& request) {
  return {imaging::DecodeMagick(request.file, format)};
}

/// What the reader of plain TIFF pixels makes of a file.
std::optional<Picture> ReadPlainTiff(const PictureRequest& request) {
  try {
    auto pixels = imaging::HighBytes(imaging::ReadUncompressedTiff(request.file));
    const int width = pixels.width, height = pixels.height;
    return Picture{{std::move(pixels), width, height}};
  } catch (const platform::UserError&) {
    return std::nullopt;  // compressed, mostly; the library's word on the file counts
  }
}

Picture ReadTiff(const PictureRequest& request) {
  try {
    auto picture = ReadMagick<MagickFormat::Tiff>(request);
    if (picture.decoded.fullWidth >= kSmallestPicture) return picture;
    return ReadPlainTiff(request).value_or(std::move(picture));
  } catch (const LibraryError&) {
    if (auto picture = ReadPlainTiff(request)) return *std::move(picture);
    throw;
  }
}

Picture ReadEos1DRaw(const PictureRequest& request) {
  try {
    return ReadEos1DPicture(request);
  } catch (const LibraryError&) {
    return ReadTiff(request);
  }
}

Picture ReadAvi(const PictureRequest& request) {
  constexpr std::uint64_t maxFormat = std::uint64_t{64} * 1024, maxFrame = std::uint64_t{512} * 1024 * 1024;
  const auto movie = metadata::ReadAviFile(request.file);
  if (!movie || movie->firstFrame.size == 0) throw LibraryError(messages::kNoFrame, "");
  if (movie->IsMotionJpeg()) {
    return {DecodeTurnedJpeg(request.file, {.offset = movie->firstFrame.position},
                             ScaleToCover(request.wanted, imaging::Turn::None))};
  }
  if (!movie->IsPlain()) throw LibraryError(messages::kNoFrame, movie->compression);
  const auto bytes = [&](const metadata::FileRange& range, std::uint64_t most) {
    return request.file.ReadUpTo(range.position, static_cast<std::size_t>(std::min(range.size, most)));
  };
  const auto format = bytes(movie->format, maxFormat), frame = bytes(movie->firstFrame, maxFrame);
  constexpr auto order = metadata::ByteOrder::Little;
  return {imaging::DecodeDib({format, order}, {frame, order})};
}

template <Format format>
Picture ReadRaw(const PictureRequest& request) {
  return ReadRawPicture(format, request);
}

struct Reader {
  Format format;
  Picture (*read)(const PictureRequest&);
};
constexpr Reader kReaders[] = {
    {Format::Jpeg, ReadJpeg},
    {Format::Jp2, ReadJp2},
    {Format::Crw, ReadRaw<Format::Crw>},
    {Format::Tiff, ReadTiff},
    {Format::Eos1DRaw, ReadEos1DRaw},
    {Format::Nef, ReadRaw<Format::Nef>},
    {Format::Avi, ReadAvi},
    {Format::Psd, [](const PictureRequest& request) { return Picture{imaging::DecodePsd(request.file)}; }},
    {Format::Gif, ReadMagick<MagickFormat::Gif>},
    {Format::Bmp, ReadMagick<MagickFormat::Bmp>},
    {Format::Mrw, ReadRaw<Format::Mrw>},
    {Format::Orf, ReadRaw<Format::Orf>},
    {Format::Raf, ReadRaw<Format::Raf>},
    {Format::Pef, ReadRaw<Format::Pef>},
    {Format::Png, [](const PictureRequest& request) { return Picture{imaging::DecodePng(request.file)}; }},
};

}  // namespace

imaging::JpegScale PictureRequest::SmallJpegScale(imaging::Turn turn) const {
  return smallJpegScale ? smallJpegScale : ScaleToCover(wanted, turn);
}

std::optional<Picture> ReadThmPicture(const FormatRow& row, const PictureRequest& request) {
  if (!row.hasThm) return std::nullopt;
  const auto path = request.companions != nullptr ? request.companions->thm : FindThm(request.path);
  const auto thm = path.empty() ? std::nullopt : platform::OpenIfReadable(path);
  if (!thm) return std::nullopt;
  // The camera turned neither of the two; a movie has nothing that tells of a turn.
  const auto turn = row.isRaw ? RawTurn(row.format, request.file) : imaging::Turn::None;
  try {
    return Picture{DecodeTurnedJpeg(metadata::FileSource(*thm), {.turn = turn}, request.SmallJpegScale(turn)),
                   PictureSource::Thm};
  } catch (const LibraryError&) {
    return std::nullopt;
  }
}

Picture ReadPicture(const FormatRow& row, const PictureRequest& request) {
  const auto* reader = std::ranges::find(kReaders, row.format, &Reader::format);
  try {
    return reader->read(request);
  } catch (const LibraryError&) {
    if (auto thm = ReadThmPicture(row, request)) return *std::move(thm);
    throw;
  }
}

}  // namespace ml::imagefiles
