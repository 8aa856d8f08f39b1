#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "metadata/edit/edited_file.h"

namespace ml::imaging {

enum class Alignment { Any, Even };

/// Stretches of a file that nothing uses any more, to be filled again before the file grows. Does not own the file.
class FreeSpace {
 public:
  explicit FreeSpace(metadata::EditedFile& file) : file_(file) {}

  /// Ranges may overlap; what lies behind the end of the file is left out. The padding between two is free as well.
  void Add(metadata::FileRange range);
  /// What must stay, though it lies in a range that was added.
  void Keep(metadata::FileRange range);
  /// To be called when all ranges are told: takes away what is free at the end of the file.
  void CutEnd();

  /// Puts bytes where there is room for them and gives the position. Throws LibraryError if it would lie behind 4 GiB.
  std::uint32_t Put(std::span<const std::byte> bytes, Alignment alignment = Alignment::Even);
  /// The same for bytes that are not known yet.
  std::uint32_t Reserve(std::size_t size) { return Put(std::vector<std::byte>(size)); }
  /// Puts bytes into room that was reserved for them.
  void Fill(std::uint32_t position, std::span<const std::byte> bytes) { file_.Overwrite(position, bytes); }

 private:
  metadata::EditedFile& file_;
  std::vector<metadata::FileRange> free_;  ///< apart from each other, in the order of the file
};

}  // namespace ml::imaging
