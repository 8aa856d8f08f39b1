#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "metadata/edit/ciff_settings.h"
#include "metadata/edit/edited_file.h"

namespace ml::metadata {

class CiffFile;

/// What Write puts in the place of the file's own data. Owns nothing.
struct CiffChanges {
  std::optional<std::span<const std::byte>> preview = std::nullopt;  ///< a JPEG
  /// Raw data, and the preview where none is told, come from this file.
  const CiffFile* rawSource = nullptr;
  const CiffSettings* settings = nullptr;  ///< put into the image properties
};

/// A CRW file by the entries of its root, to be written anew. Only little-endian files are taken. Does not own the
/// source.
class CiffFile {
 public:
  /// Throws UserError with the reason.
  explicit CiffFile(const ByteSource& source);

  /// Where the data of the first entry with this tag stand. Not looked whether the file holds them.
  std::optional<FileRange> FindEntry(std::uint16_t tag) const;
  /// The settings in the image properties.
  CiffSettings CollectSettings() const;

  /// Makes `file`, which must hold the same bytes as the source, a file with these changes: the head as it is, the data
  /// of all entries one behind the other in the order of the root, the root behind them, and what other programs put
  /// between that and its place at the end. Throws UserError with the reason, with nothing changed.
  void Write(EditedFile& file, const CiffChanges& changes) const;

 private:
  struct Entry {
    std::uint16_t tag = 0;
    std::uint32_t size = 0, offset = 0;  ///< as stored: from the start of the heap, or a value
    bool HasData() const { return (tag & 0xc000) != 0x4000; }
  };

  std::vector<std::byte> DataOf(const Entry& entry) const;
  std::vector<std::byte> NewDataOf(const Entry& entry, const CiffChanges& changes) const;
  std::vector<std::byte> Tail() const;

  const ByteSource& source_;
  std::uint64_t heapOffset_ = 0;
  std::uint32_t directory_ = 0;  ///< where the root stands, from the start of the heap
  std::vector<Entry> entries_;
};

}  // namespace ml::metadata
