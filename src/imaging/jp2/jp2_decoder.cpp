#include "imaging/jp2/jp2_decoder.h"

#include <algorithm>

#include "imaging/jp2/jp2_colours.h"
#include "imaging/jp2/jp2_reader.h"

namespace ml::imaging {
namespace {

constexpr std::uint32_t kCodeStreamStart = 0xff4fff51;

Jp2Reader::Content ContentOf(const metadata::ByteSource& source) {
  try {
    const bool bare = source.ReadNumber(0, 4, metadata::ByteOrder::Big) == kCodeStreamStart;
    return bare ? Jp2Reader::Content::CodeStream : Jp2Reader::Content::BoxedFile;
  } catch (metadata::ExifException) {
    Refuse("The file ends too early");
  }
}

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

}  // namespace

DecodedPicture DecodeJp2(const metadata::ByteSource& source, const WantedSize& wanted, const Jp2Options& options) {
  const auto content = options.codeStream ? Jp2Reader::Content::CodeStream : ContentOf(source);
  Jp2Reader reader(source, options.codeStream.value_or(0), content, options.threads);
  const auto full = reader.FullSize();
  reader.Decode(wanted ? ChooseHalvings(full, wanted(full.width, full.height), reader.MaxHalvings()) : 0);
  return {CombineComponents(reader.Components(), reader.Colours()), full.width, full.height, reader.Damaged()};
}

}  // namespace ml::imaging
