#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "metadata/byte_source.h"
#include "metadata/byte_view.h"
#include "metadata/ifd.h"

/// Values of directory entries. Data in memory and data in a file are read by different rules, and programs which show
/// what these rules make of odd files expect both to stay.
namespace ml::metadata {

/// The longest text that is read from a file.
constexpr std::uint32_t kMaxFileText = 0x1fff;

/// Values in a block in memory, whose offsets count from its first byte. What lies outside gives nothing.

/// One rational, signed or not; nothing for another type or count and for a denominator of 0.
std::optional<double> readRational(ByteView block, const IfdEntry& entry);
/// Up to the first zero byte; empty for another type. Kept: always taken from an offset, so a text short enough to
/// stand in the entry itself reads as nothing.
std::string readASCII(ByteView block, const IfdEntry& entry);
/// The text of a comment field, see CommentText; types ASCII and undefined.
std::string readUserComment(ByteView block, const IfdEntry& entry);

/// Values in a file, whose offsets count from `base`. Throws ExifException::OutOfBounds where no seek can lead; data
/// that the file ends before or inside is read as far as it is there.

/// One rational, signed or not, whatever the count; nothing for another type and for a denominator of 0.
std::optional<double> readIFDrational(const ByteSource& file, ByteOrder order, const IfdEntry& entry,
                                      std::uint64_t base);
/// Up to the first zero byte, at most kMaxFileText bytes, whatever the type. Up to three bytes are taken from the entry
/// itself. Kept: four bytes, which stand there too, are taken for an offset.
std::string readIFDstring(const ByteSource& file, const IfdEntry& entry, std::uint64_t base);
/// The same bytes as a comment field, see CommentText.
std::string readIFDcomment(const ByteSource& file, const IfdEntry& entry, std::uint64_t base);

/// What a comment field of tag 37510 says. Its first eight bytes name the encoding if there are more than eight and the
/// eighth is zero. Of 16-bit text the low bytes are taken.
std::string CommentText(ByteView field);

}  // namespace ml::metadata
