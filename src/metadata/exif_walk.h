#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "metadata/exif_data.h"
#include "metadata/ifd.h"
#include "metadata/maker_note.h"

namespace ml::metadata {

/// How the directories of one kind of data are walked: the limits, and which values count from where.
struct ExifWalkRules {
  MakerNoteForm form = MakerNoteForm::Block;
  std::uint64_t base = 0;  ///< where the TIFF header stands
  IfdPolicy ifd0, exif;
};

/// A block in memory that holds nothing but TIFF data: no limit but its end.
ExifWalkRules BlockRules();
/// A file with its TIFF header at `base`.
ExifWalkRules FileRules(std::uint64_t base);

/// One walk over the first and the EXIF directory, filling a record. The tag table calls back for values and for what
/// leads to other places. Throws ExifException where a directory is broken; the record keeps what was read until then.
class ExifWalk {
 public:
  /// Does not own the source. A block is also needed as a view; a file has none.
  ExifWalk(ExifData& data, const ByteSource& source, ByteView block, const ExifWalkRules& rules);

  void WalkIfd0(std::uint32_t offset);

  ExifData& Data() { return data_; }
  /// Whether this is the first time that anybody asks about an entry of this tag in this directory.
  bool IsFirst(const IfdEntry& entry);
  std::string Text(const IfdEntry& entry) const;
  std::optional<double> Rational(const IfdEntry& entry) const;
  std::string Comment(const IfdEntry& entry) const;
  /// The bytes of an entry counted in bytes or longs; empty if they are not all there, and for a tag that its directory
  /// held before.
  std::vector<std::byte> Bytes(const IfdEntry& entry);

  void EnterExif(const IfdEntry& pointer);
  /// Takes the size of the picture from a sub-directory.
  void EnterSubIfd(const IfdEntry& pointer);
  /// Of the first note in each directory.
  void ReadMakerNote(const IfdEntry& entry);
  /// Remember where the text can be overwritten in place.
  void KeepDescriptionPlace(const IfdEntry& entry);
  void KeepCommentPlace(const IfdEntry& entry);

 private:
  enum class Directory { Ifd0, Exif };

  void Apply(const IfdEntry& entry);
  bool TakeSizeOfSubIfd(std::uint32_t offset);
  bool InFile() const { return rules_.form == MakerNoteForm::File; }
  std::uint64_t NumberBase() const;
  std::uint32_t PlaceOf(const IfdEntry& entry, std::uint64_t base) const;

  ExifData& data_;
  const ByteSource& source_;
  ByteView block_;
  ExifWalkRules rules_;
  IfdWalker walker_;
  Directory directory_ = Directory::Ifd0;
  std::set<std::pair<Directory, std::uint16_t>> taken_;  ///< tags of large blocks
};

}  // namespace ml::metadata
