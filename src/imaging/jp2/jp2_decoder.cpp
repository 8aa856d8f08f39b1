#include "imaging/jp2/jp2_decoder.h"

#include "imaging/jp2/code_stream.h"
#include "imaging/jp2/jp2_colours.h"
#include "imaging/jp2/jp2_cost.h"
#include "imaging/jp2/jp2_reader.h"
#include "imaging/messages.h"
#include "metadata/jp2_boxes.h"

namespace ml::imaging {
namespace {

/// Even a picture of one colour takes a byte for so many pixels. A file far below promises more than it holds; small
/// pictures cost nothing to decode.
constexpr long long kMaxPixelsPerByte = 2000;
constexpr long long kSmallPicture = 4'000'000;

int Halved(int side, int halvings) { return static_cast<int>((side + (1LL << halvings) - 1) >> halvings); }

/// The most halvings that still cover what is wanted.
int ChooseHalvings(PictureSize full, PictureSize wanted, int most) {
  int halvings = 0;
  while (halvings < most && Halved(full.width, halvings + 1) >= wanted.width &&
         Halved(full.height, halvings + 1) >= wanted.height) {
    ++halvings;
  }
  return halvings;
}

void CheckCost(const metadata::ByteSource& source, std::uint64_t codeStream) {
  try {
    if (!IsBearable(ReadJp2Tile(source, codeStream))) Refuse("The picture is cut into too many pieces");
  } catch (metadata::ExifException) {
    Refuse("The header of the code stream is broken");
  }
}

}  // namespace

DecodedPicture DecodeJp2(const metadata::ByteSource& source, const WantedSize& wanted, const Jp2Options& options) {
  const auto file = metadata::ReadJp2File(source);
  if (!file && !options.codeStream) Refuse("Not a JPEG 2000 file");
  const auto codeStream =
      options.codeStream ? metadata::FileRange{*options.codeStream, source.Size()} : file->codeStream;
  if (codeStream.size == 0) Refuse("The file has no code stream");
  // A file that is a bare code stream has no boxes before it.
  const bool bare = options.codeStream || codeStream.position == 0;
  CheckCost(source, codeStream.position);
  const auto gap = FindGap(source, codeStream);
  const MendedSource mended(source, gap.value_or(CodeStreamGap{}));

  Jp2Reader reader(gap ? mended : source, bare ? codeStream.position : 0,
                   bare ? Jp2Reader::Content::CodeStream : Jp2Reader::Content::BoxedFile, options.threads);
  const auto full = reader.FullSize();
  const int halvings = wanted ? ChooseHalvings(full, wanted(full.width, full.height), reader.MaxHalvings()) : 0;
  const auto pixels = static_cast<long long>(Halved(full.width, halvings)) * Halved(full.height, halvings);
  const auto bytes = static_cast<long long>(source.Size() - codeStream.position);
  if (pixels > kSmallPicture && pixels / kMaxPixelsPerByte > bytes) Refuse(messages::kFileEndsEarly);
  reader.Decode(halvings);
  return {CombineComponents(reader.Components(), reader.Colours()), full.width, full.height,
          gap.has_value() || reader.Damaged()};
}

}  // namespace ml::imaging
