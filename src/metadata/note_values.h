#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "metadata/code_words.h"
#include "metadata/exif_data.h"
#include "metadata/ifd.h"
#include "metadata/maker_note.h"

/// What the readers of makers' notes that are built like a TIFF directory share.
namespace ml::metadata {

/// The first number of an entry whose bytes stand in the entry itself: bytes, shorts or a long, signed or not; those
/// of a signed one as they are stored. Nothing for other types and for what stands elsewhere.
std::optional<std::uint32_t> EntryNumber(const IfdEntry& entry, ByteOrder order);

/// Where the directory stands that follows `head` bytes of a note, counted like the note. Throws
/// ExifException::OutOfBounds if the note is not there.
std::uint32_t NoteDirectoryOffset(const MakerNote& note, std::uint32_t head);

/// A text without the blanks at its end; one of blanks alone leaves what another tag said.
void TakeNoteText(std::string& field, std::string_view text);

/// A tag of a note whose number is shown as a word.
struct NoteWordRow {
  std::uint16_t tag;
  std::string ExifData::*field;
  std::span<const CodeWord> words;
  std::string_view otherwise = {};  ///< of other numbers; empty: they leave what another tag said
};
/// Fills the field of the entry's row, if there is one.
void TakeNoteWord(ExifData& data, std::span<const NoteWordRow> rows, const IfdEntry& entry, ByteOrder order);

}  // namespace ml::metadata
