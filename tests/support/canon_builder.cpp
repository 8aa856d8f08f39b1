#include "support/canon_builder.h"

namespace ml::test {

std::vector<std::uint32_t> CanonArray(std::size_t count, const std::vector<std::pair<std::size_t, int>>& set) {
  std::vector<std::uint32_t> words(count);
  words[0] = static_cast<std::uint32_t>(2 * count);
  for (const auto& [index, value] : set) words[index] = static_cast<std::uint32_t>(value);
  return words;
}

TiffBuilder CanonNote() {
  TiffBuilder note;
  note.Short(1, CanonArray(46, {{2, 100}, {3, 4}, {4, 2}, {5, 1}, {13, 1}, {23, 300}, {24, 28}, {25, 1}, {42, 2}}));
  note.Short(2, {0, 100, 914, 610}).Short(4, CanonArray(33, {{6, 0xffe0}, {7, 9}, {9, 3}, {14, 0x3002}, {19, 142}}));
  note.Ascii(7, "Firmware Version 1.0.2").Long(8, 1234567).Ascii(9, "A. Photographer").Long(12, 560018150);
  note.Short(15, CanonArray(18, {{2, 0x201}})).Short(18, CanonArray(24, {{22, 8}}));
  return note.Short(174, 5200).Short(180, 2);
}

}  // namespace ml::test
