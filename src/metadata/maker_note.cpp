#include "metadata/maker_note.h"

#include <algorithm>
#include <iterator>

#include "metadata/canon/canon_note.h"
#include "metadata/casio/casio_note.h"
#include "metadata/fuji/fuji_note.h"
#include "metadata/nikon/nikon_note.h"
#include "metadata/olympus/olympus_note.h"
#include "platform/paths.h"

namespace ml::metadata {
namespace {

struct MakerRow {
  std::string_view word;
  MakerNoteReader read;
};
/// The order decides where a make holds two of the words.
constexpr MakerRow kMakers[] = {
    {"canon", ReadCanonMakerNote}, {"olympus", ReadOlympusNote}, {"fuji", ReadFujiNote},
    {"nikon", ReadNikonNote},      {"casio", ReadCasioNote},     {"pentax", nullptr},  // nothing in it is shown
};

}  // namespace

MakerNoteReader FindMakerNoteReader(std::string_view make) {
  const auto lowered = platform::AsciiLower(make);
  const auto* row =
      std::ranges::find_if(kMakers, [&](const auto& maker) { return lowered.find(maker.word) != std::string::npos; });
  return row == std::end(kMakers) ? nullptr : row->read;
}

}  // namespace ml::metadata
