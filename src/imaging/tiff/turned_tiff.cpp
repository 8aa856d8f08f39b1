#include "imaging/tiff/turned_tiff.h"

#include <algorithm>
#include <bit>
#include <set>
#include <utility>

#include "imaging/tiff/free_space.h"
#include "imaging/tiff/messages.h"
#include "imaging/tiff/tiff_reader.h"
#include "metadata/byte_writer.h"
#include "metadata/edit/ifd_directory.h"
#include "metadata/edit/tiff_image_data.h"
#include "platform/content_hash.h"
#include "platform/errors.h"

namespace ml::imaging {
namespace {

using metadata::ByteOrder;
using metadata::ByteWriter;
using metadata::EditedFile;
using metadata::IfdDirectory;
using metadata::IfdEntry;
using metadata::IfdType;
using platform::LibraryError;

namespace tag {
constexpr std::uint16_t kWidth = 256, kHeight = 257, kCompression = 259, kPhotometric = 262, kStripOffsets = 273,
                        kOrientation = 274, kRowsPerStrip = 278, kStripSizes = 279, kResolutionX = 282,
                        kResolutionY = 283, kPlanes = 284, kExif = 34665, kGps = 34853, kExifWidth = 40962,
                        kExifHeight = 40963, kInterop = 40965;
}
/// Tell how the pixels were stored, or hold pictures that stay as they are: fill order, fax options, predictor, tiles,
/// sub-directories, JPEG tables and streams, places on the earth, layers.
constexpr std::uint16_t kDropped[] = {266, 292, 293, 317, 322, 323, 324,   325,   330,   347,  512,
                                      513, 514, 515, 517, 518, 519, 33550, 33922, 34264, 37724};
/// Tell of brightness and colour difference, which the pixels are not any more.
constexpr std::uint16_t kColourDifference[] = {529, 530, 531, 532};
constexpr std::size_t kMaxPictures = 1000;
constexpr std::size_t kStripBytes = 64 * 1024;
constexpr std::size_t kDirectoryLevels = 3;
constexpr std::uint64_t kInEntry = 4;  ///< bytes of a value that has no place of its own

template <class List>
bool Holds(const List& list, std::uint16_t wanted) {
  return std::ranges::find(list, wanted) != std::end(list);
}

bool SwapsSides(Turn turn) { return turn == Turn::cw90 || turn == Turn::cw270; }

/// One picture on its way: its old directory, and what is known of the new one.
struct Page {
  IfdDirectory old;
  std::uint32_t width = 0, height = 0, rowsPerStrip = 0;
  std::uint16_t oldPhotometric = 0, photometric = 0;
  std::vector<std::uint32_t> offsets{}, sizes{};
  std::uint64_t hash = 0;  ///< of the samples in the byte order of this machine
};

std::vector<Page> ReadPages(const EditedFile& file) {
  const auto header = metadata::ReadTiffHeader(file, 0);
  if (!header || !header->IsTiff()) throw LibraryError(messages::kTiffInvalid, "");
  std::vector<Page> pages;
  std::set<std::uint32_t> visited;
  for (auto offset = header->firstDirectory; offset != 0; offset = pages.back().old.next) {
    if (pages.size() >= kMaxPictures || !visited.insert(offset).second) {
      throw LibraryError(messages::kTiffInvalid, messages::kTiffLoop);
    }
    pages.push_back({.old = metadata::ReadIfdDirectory(file, header->order, 0, offset)});
  }
  if (pages.empty()) throw LibraryError(messages::kTiffInvalid, "");
  return pages;
}

bool Stays(const IfdEntry& entry, const Page& page) {
  constexpr std::uint16_t written[] = {tag::kWidth,      tag::kHeight,       tag::kCompression,  tag::kPhotometric,
                                       tag::kStripSizes, tag::kStripOffsets, tag::kRowsPerStrip, tag::kPlanes};
  const bool colours = page.photometric != page.oldPhotometric && Holds(kColourDifference, entry.tag);
  return !Holds(written, entry.tag) && !Holds(kDropped, entry.tag) && !colours;
}

/// A directory with its values, and the directories of EXIF data below it.
void KeepDirectory(const EditedFile& file, const IfdDirectory& directory, FreeSpace& space, std::size_t levels) {
  constexpr std::uint16_t pointers[] = {tag::kExif, tag::kGps, tag::kInterop};
  for (std::size_t i = 0; i < directory.entries.size(); ++i) {
    const auto value = metadata::IfdValueRange(directory, i);
    if (value.size > kInEntry) space.Keep(value);
    const auto& entry = directory.entries[i];
    if (levels == 0 || !Holds(pointers, entry.tag)) continue;
    try {
      const auto below = metadata::ReadIfdDirectory(file, directory.order, 0, entry.rawValue);
      space.Keep({below.position, below.EntryPosition(below.entries.size()) + 4 - below.position});
      KeepDirectory(file, below, space, levels - 1);
    } catch (metadata::ExifException) {
      continue;  // nobody can read it
    }
  }
}

/// What the old pictures took becomes free, as far as nothing else shares it.
void Release(const EditedFile& file, const std::vector<Page>& pages, FreeSpace& space) {
  for (const auto& page : pages) {
    space.Add({page.old.position, page.old.EntryPosition(page.old.entries.size()) + 4 - page.old.position});
    for (std::size_t i = 0; i < page.old.entries.size(); ++i) {
      if (!Stays(page.old.entries[i], page)) space.Add(metadata::IfdValueRange(page.old, i));
    }
  }
  for (const auto& range : metadata::TiffImageData(file, 0, metadata::TiffMagic::Required)) space.Add(range);
  space.Keep({0, 8});
  for (const auto& page : pages) {
    auto kept = page.old;
    for (auto& entry : kept.entries) {
      if (!Stays(entry, page)) entry.count = 0;
    }
    KeepDirectory(file, kept, space, kDirectoryLevels);
  }
  space.CutEnd();
}

void PlaceStrips(TiffSamples& samples, Page& page, FreeSpace& space) {
  const auto rowBytes = samples.RowBytes();
  page.width = samples.width;
  page.height = samples.height;
  page.rowsPerStrip = static_cast<std::uint32_t>(std::clamp<std::size_t>(kStripBytes / rowBytes, 1, samples.height));
  const auto own = std::endian::native == std::endian::little ? ByteOrder::Little : ByteOrder::Big;
  if (page.old.order != own) SwapSampleBytes(samples);
  const std::span<const std::byte> bytes(samples.data);
  for (std::uint32_t y = 0; y < samples.height; y += page.rowsPerStrip) {
    const auto size = rowBytes * std::min(page.rowsPerStrip, samples.height - y);
    const auto alignment = samples.bitsPerSample > 8 ? Alignment::Even : Alignment::Any;
    page.offsets.push_back(space.Put(bytes.subspan(y * rowBytes, size), alignment));
    page.sizes.push_back(static_cast<std::uint32_t>(size));
  }
}

IfdEntry Entry(std::uint16_t wanted, IfdType type, std::uint32_t value) {
  return {.tag = wanted, .type = static_cast<std::uint16_t>(type), .count = 1, .rawValue = 0, .value = value};
}

/// Numbers in a value of longs, outside of the entry if they are several.
IfdEntry Longs(std::uint16_t wanted, const std::vector<std::uint32_t>& numbers, ByteOrder order, FreeSpace& space) {
  auto entry = Entry(wanted, IfdType::Long, numbers.front());
  entry.count = static_cast<std::uint32_t>(numbers.size());
  if (numbers.size() > 1) {
    ByteWriter out(order);
    for (const auto number : numbers) out.Long(number);
    entry.value = space.Put(out.View());
  }
  entry.rawValue = entry.value;
  return entry;
}

void SwapValues(std::vector<IfdEntry>& entries, std::uint16_t first, std::uint16_t second) {
  const auto a = std::ranges::find(entries, first, &IfdEntry::tag);
  const auto b = std::ranges::find(entries, second, &IfdEntry::tag);
  if (a == entries.end() || b == entries.end()) return;
  std::swap(*a, *b);
  std::swap(a->tag, b->tag);
}

std::vector<IfdEntry> NewEntries(const Page& page, Turn turn, FreeSpace& space) {
  std::vector<IfdEntry> entries;
  for (auto entry : page.old.entries) {
    if (!Stays(entry, page)) continue;
    if (entry.tag == tag::kOrientation) entry = Entry(tag::kOrientation, IfdType::Short, 1);
    entries.push_back(entry);
  }
  if (SwapsSides(turn)) SwapValues(entries, tag::kResolutionX, tag::kResolutionY);
  entries.push_back(Longs(tag::kWidth, {page.width}, page.old.order, space));
  entries.push_back(Longs(tag::kHeight, {page.height}, page.old.order, space));
  entries.push_back(Entry(tag::kCompression, IfdType::Short, 1));
  entries.push_back(Entry(tag::kPhotometric, IfdType::Short, page.photometric));
  entries.push_back(Longs(tag::kStripOffsets, page.offsets, page.old.order, space));
  entries.push_back(Longs(tag::kRowsPerStrip, {page.rowsPerStrip}, page.old.order, space));
  entries.push_back(Longs(tag::kStripSizes, page.sizes, page.old.order, space));
  entries.push_back(Entry(tag::kPlanes, IfdType::Short, 1));
  if (entries.size() > std::max<std::size_t>(page.old.entries.size(), metadata::kMaxFirstEntries)) {
    throw LibraryError(messages::kTiffInvalid, messages::kTiffTooManyEntries);
  }
  std::ranges::stable_sort(entries, {}, &IfdEntry::tag);
  return entries;
}

std::vector<std::byte> BuildDirectory(const std::vector<IfdEntry>& entries, ByteOrder order, std::uint32_t next) {
  ByteWriter out(order);
  out.Short(static_cast<std::uint16_t>(entries.size()));
  for (const auto& entry : entries) {
    out.Short(entry.tag);
    out.Short(entry.type);
    out.Long(entry.count);
    const bool made = entry.Is(IfdType::Short) && entry.count == 1;
    if (made) {
      out.Short(static_cast<std::uint16_t>(entry.value));
      out.Short(0);
    } else {
      out.Long(entry.rawValue);
    }
  }
  out.Long(next);
  return out.Take();
}

/// Width and height in the EXIF data, which are two entries like any other.
void SwapExifSides(EditedFile& file, ByteOrder order, std::uint32_t directory) {
  try {
    const auto exif = metadata::ReadIfdDirectory(file, order, 0, directory);
    const auto* width = exif.Find(tag::kExifWidth);
    const auto* height = exif.Find(tag::kExifHeight);
    if (width == nullptr || height == nullptr) return;
    constexpr std::size_t behindTag = 2;
    const auto placeOf = [&](const IfdEntry* entry) {
      return exif.EntryPosition(static_cast<std::size_t>(entry - exif.entries.data())) + behindTag;
    };
    const auto first = file.Read(placeOf(width), metadata::kIfdEntrySize - behindTag);
    const auto second = file.Read(placeOf(height), metadata::kIfdEntrySize - behindTag);
    file.Overwrite(placeOf(width), second);
    file.Overwrite(placeOf(height), first);
  } catch (metadata::ExifException) {
    return;  // what cannot be read is left alone
  }
}

void WriteDirectories(EditedFile& file, std::vector<Page>& pages, Turn turn, FreeSpace& space) {
  std::vector<std::vector<IfdEntry>> entries;
  std::vector<std::uint32_t> places;
  for (const auto& page : pages) {
    entries.push_back(NewEntries(page, turn, space));
    places.push_back(space.Reserve(2 + entries.back().size() * metadata::kIfdEntrySize + 4));
  }
  const auto order = pages.front().old.order;
  std::set<std::uint32_t> exif;  // pictures may share their data
  for (std::size_t i = 0; i < pages.size(); ++i) {
    const auto next = i + 1 < pages.size() ? places[i + 1] : 0;
    space.Fill(places[i], BuildDirectory(entries[i], order, next));
    if (const auto* pointer = pages[i].old.Find(tag::kExif)) exif.insert(pointer->rawValue);
  }
  for (const auto directory : exif) {
    if (SwapsSides(turn)) SwapExifSides(file, order, directory);
  }
  ByteWriter first(order);
  first.Long(places.front());
  file.Overwrite(4, first.View());
}

void RequireReadBack(const EditedFile& file, const std::vector<Page>& pages) {
  const auto turned = ReadPages(file);
  TiffReader reader(file);
  bool same = turned.size() == pages.size();
  for (std::size_t i = 0; same && i < pages.size(); ++i) {
    const auto picture = reader.Read(static_cast<std::uint32_t>(turned[i].old.position));
    same = picture.samples.width == pages[i].width && picture.samples.height == pages[i].height &&
           platform::HashOf(picture.samples.data) == pages[i].hash;
  }
  if (!same) throw LibraryError(messages::kTiffInvalid, messages::kTiffReadBack);
}

}  // namespace

void TurnTiff(EditedFile& file, Turn turn) {
  auto pages = ReadPages(file);
  std::vector<TiffSamples> pictures;
  TiffReader reader(file);
  for (auto& page : pages) {
    const auto picture = reader.Read(static_cast<std::uint32_t>(page.old.position));
    const auto* photometric = page.old.Find(tag::kPhotometric);
    page.photometric = picture.photometric;
    page.oldPhotometric = static_cast<std::uint16_t>(photometric != nullptr ? photometric->value : 0);
    pictures.push_back(Turned(picture.samples, turn));
    page.hash = platform::HashOf(pictures.back().data);
  }
  FreeSpace space(file);
  Release(file, pages, space);
  for (std::size_t i = 0; i < pages.size(); ++i) {
    PlaceStrips(pictures[i], pages[i], space);
    pictures[i] = {};
  }
  WriteDirectories(file, pages, turn, space);
  RequireReadBack(file, pages);
}

}  // namespace ml::imaging
