#pragma once

#include <cstdint>

#include "metadata/ifd.h"
#include "metadata/maker_note.h"

namespace ml::metadata {

/// The record that a Nikon note fills and where the values of its entries stand.
struct NikonValues {
  ExifData& data;
  const ByteSource& source;
  ByteOrder order;
  std::uint64_t base;  ///< offsets count from here
};

/// What one entry says; the notes of JPEGs are asked for more than those of files.
void TakeNikonTag(const NikonValues& values, const IfdEntry& entry, MakerNoteForm form);

}  // namespace ml::metadata
