#include "support/ciff_builder.h"

#include <chrono>
#include <cstdio>
#include <utility>

#include "support/canon_builder.h"

namespace ml::test {
namespace {

int RotationDegrees(int orientation) {
  return orientation == 6 ? 90 : orientation == 3 ? 180 : orientation == 8 ? 270 : 0;
}

/// The camera's local time, counted as if it were UTC, which is what cameras store.
std::int64_t SecondsOf(const std::string& dateTime) {
  int year = 0, hour = 0, minute = 0, second = 0;
  unsigned month = 0, day = 0;
  std::sscanf(dateTime.c_str(), "%d:%u:%u %d:%d:%d", &year, &month, &day, &hour, &minute, &second);
  const std::chrono::sys_days date(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day));
  return (date.time_since_epoch() + std::chrono::hours(hour) + std::chrono::minutes(minute) +
          std::chrono::seconds(second))
      .count();
}

std::vector<int> Words(std::size_t count, const std::vector<std::pair<std::size_t, int>>& set) {
  const auto words = CanonArray(count, set);
  return {words.begin(), words.end()};
}

std::string PaddedText(std::string text, std::size_t size, char padding = '\0') {
  text.resize(size, padding);
  return text;
}

}  // namespace

CiffBuilder& CiffBuilder::Data(int tag, std::string_view data) {
  items_.push_back({.tag = tag, .data = std::string(data)});
  return *this;
}
CiffBuilder& CiffBuilder::Shorts(int tag, const std::vector<int>& values) {
  items_.push_back({.tag = tag, .width = 2, .numbers = {values.begin(), values.end()}});
  return *this;
}
CiffBuilder& CiffBuilder::Longs(int tag, const std::vector<std::int64_t>& values) {
  items_.push_back({.tag = tag, .width = 4, .numbers = values});
  return *this;
}
CiffBuilder& CiffBuilder::Heap(int tag, const CiffBuilder& heap) {
  items_.push_back({.tag = tag, .heaps = {heap}});
  return *this;
}
CiffBuilder& CiffBuilder::Entry(int tag, std::uint32_t size, std::uint32_t offset) {
  items_.push_back({.tag = tag, .numbers = {size, offset}, .entryOnly = true});
  return *this;
}

std::string CiffBuilder::Build(Endian order) const {
  ByteString heap(order), directory(order);
  directory.Short(items_.size());
  for (const auto& item : items_) {
    directory.Short(static_cast<std::uint64_t>(item.tag));
    if (item.entryOnly) {
      for (const auto number : item.numbers) directory.Long(static_cast<std::uint64_t>(number));
      continue;
    }
    const auto start = heap.Size();
    for (const auto number : item.numbers) heap.Number(static_cast<std::uint64_t>(number), item.width);
    heap.Text(item.data);
    for (const auto& inner : item.heaps) heap.Text(inner.Build(order));
    directory.Long(heap.Size() - start).Long(start);
    heap.Align(2);
  }
  const auto place = heap.Size();
  return heap.Text(directory.Bytes()).Long(place).Take();
}

std::string CiffBuilder::BuildFile(Endian order) const {
  ByteString out(order);
  out.Text(order == Endian::Big ? "MM" : "II").Long(26).Text("HEAPCCDR").Long(0x00010002).Zeros(8);
  return out.Text(Build(order)).Take();
}

CiffBuilder CrwProperties(const CameraRaw& raw) {
  constexpr int kFileNumber = 1000123, kComponentBits = 8, kColourBits = 24;
  CiffBuilder camera;
  camera.Data(0x080a, (raw.make.empty() ? "Canon" : raw.make) + '\0' +
                          (raw.model.empty() ? "Canon PowerShot G2" : raw.model) + '\0');
  camera.Data(0x0810, PaddedText("A. Photographer", 32)).Data(0x080b, PaddedText("Firmware Version 1.00D", 32));
  camera.Entry(0x580b, 305465770, 0);
  CiffBuilder settings;
  settings.Entry(0x5029, raw.order == Endian::Big ? 0x00000023 : 0x00230000, 0);  // four words, the second 35
  settings.Shorts(0x102a, Words(33, {{2, 160}, {4, 161}, {5, 223}, {6, 0xffec}, {7, 9}, {21, 160}, {22, 0xffb4}}));
  settings.Shorts(0x102d, Words(46, {{1, 2}, {3, 3}, {23, 1120}, {24, 448}, {25, 16}, {29, 0x2000}}));
  settings.Shorts(0x1033, Words(18, {{12, 0x0c01}})).Shorts(0x1038, Words(24, {{22, 4}}));
  settings.Shorts(0x10ae, {5200}).Shorts(0x10b4, {1});
  CiffBuilder properties;
  properties.Data(0x0805, PaddedText("ASCIIA comment", 256, ' ')).Heap(0x2807, camera);
  properties.Longs(0x180e, {SecondsOf(raw.dateTime), 0, 0});
  properties.Longs(
      0x1810, {raw.width, raw.height, 0x3f800000, RotationDegrees(raw.orientation), kComponentBits, kColourBits, 1});
  return properties.Entry(0x5817, kFileNumber, 0).Heap(0x300b, settings);
}

CiffBuilder CrwHeap(const CameraRaw& raw) {
  CiffBuilder root;
  root.Data(0x2005, std::string(static_cast<std::size_t>(raw.width), '\x55')).Data(0x2007, RawPreview(raw));
  return root.Heap(0x300a, CrwProperties(raw));
}

}  // namespace ml::test
