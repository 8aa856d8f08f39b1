#include "metadata/edit/orientation_writer.h"

#include <algorithm>

#include "metadata/exif_block.h"
#include "metadata/tiff_tags.h"

namespace ml::metadata {
namespace {

constexpr std::uint16_t kOrientation[] = {tiff_tag::kOrientation};
constexpr std::uint32_t kUpright = 1;

bool InChain(const ExifEntryPlace& place) { return place.directory != ExifDirectory::Exif && HoldsNumber(place); }
bool IsTurn(const ExifEntryPlace& place) { return InChain(place) && DegreesOfOrientation(NumberIn(place)).has_value(); }

std::optional<ExifEntryPlace> FirstOf(const std::vector<ExifEntryPlace>& places,
                                      bool (*wanted)(const ExifEntryPlace&)) {
  const auto found = std::ranges::find_if(places, wanted);
  return found == places.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

std::optional<ExifEntryPlace> FindExifOrientation(const ByteSource& jpeg) {
  return FirstOf(FindExifEntries(jpeg, kOrientation), InChain);
}

std::optional<ExifEntryPlace> FindShownOrientation(const ByteSource& jpeg) {
  const auto places = FindExifEntries(jpeg, kOrientation);
  const auto shown = FirstOf(places, IsTurn);
  return shown ? shown : FirstOf(places, InChain);
}

std::uint32_t OrientationOfDegrees(int degrees) {
  switch (degrees) {
    case 90:
      return 6;
    case 180:
      return 3;
    case 270:
      return 8;
    default:
      return kUpright;
  }
}

bool WriteOrientationToExif(EditedFile& jpeg, int degrees) {
  const auto place = FindExifOrientation(jpeg);
  if (place) OverwriteNumber(jpeg, *place, OrientationOfDegrees(degrees));
  return place.has_value();
}

void MakeUpright(EditedFile& jpeg) {
  for (const auto& place : FindExifEntries(jpeg, kOrientation)) {
    if (NumberIn(place) != kUpright) OverwriteNumber(jpeg, place, kUpright);
  }
}

}  // namespace ml::metadata
