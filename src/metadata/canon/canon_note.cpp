#include "metadata/canon/canon_note.h"

#include <algorithm>
#include <limits>
#include <string>

#include "metadata/canon/canon_values.h"
#include "metadata/exif_values.h"
#include "metadata/ifd.h"

namespace ml::metadata {
namespace {

constexpr std::uint32_t kMaxFileEntries = 100;
constexpr std::uint32_t kSmallestArray = 3;
constexpr std::uint32_t kMaxWords = 1024;  ///< of an array; the words with a meaning stand at its beginning

IfdPolicy PolicyOf(MakerNoteForm form) {
  IfdPolicy policy{.followNext = false};
  if (form == MakerNoteForm::File) {
    policy.maxEntries = kMaxFileEntries;
    policy.visitCutDirectory = false;
  }
  return policy;
}

bool HasText(std::uint16_t tag) { return tag == canon_tag::kFirmware || tag == canon_tag::kOwner; }
bool HasLong(std::uint16_t tag) { return tag == canon_tag::kImageNumber || tag == canon_tag::kBodyNumber; }
bool HasSingleShort(std::uint16_t tag, MakerNoteForm form) {
  // Kept: the colour space of a file is told by other means.
  return tag == canon_tag::kColorTemperature || (tag == canon_tag::kColorSpace && form == MakerNoteForm::Block);
}
bool HasArray(std::uint16_t tag) {
  using namespace canon_tag;
  constexpr std::uint16_t kArrays[] = {kCameraSettings,  kFocalLength,   kShotInformation,
                                       kCustomFunctions, kAfInformation, kEos1DCustomFunctions};
  return std::ranges::find(kArrays, tag) != std::end(kArrays);
}

bool Fits(const MakerNote& note, const IfdEntry& entry, std::uint32_t width) {
  const auto size = note.source.Size();
  return entry.rawValue <= size && entry.count <= (size - entry.rawValue) / width;
}

/// A text that is not wholly in the block is empty, and costs nothing else.
std::string TextOf(const MakerNote& note, IfdEntry entry) {
  if (note.form == MakerNoteForm::File) return readIFDstring(note.source, entry, 0);
  if (!Fits(note, entry, 1)) return {};
  const auto bytes = note.source.Read(entry.rawValue, entry.count);
  entry.value = 0;
  return readASCII(ByteView(bytes, note.order), entry);
}

void ApplyArray(ExifData& data, const MakerNote& note, const IfdEntry& entry) {
  if (!Fits(note, entry, 2)) throw ExifException::OutOfBounds;
  const auto bytes = note.source.Read(entry.rawValue, std::size_t{2} * std::min(entry.count, kMaxWords));
  ApplyCanonArray(data, entry.tag, CanonWords(ByteView(bytes, note.order)));
}

void Apply(ExifData& data, const MakerNote& note, const IfdEntry& entry) {
  const bool isSingle = entry.count == 1;
  const bool isLong = isSingle && entry.Is(IfdType::Long) && HasLong(entry.tag);
  const bool isShort = isSingle && entry.Is(IfdType::Short) && HasSingleShort(entry.tag, note.form);
  if (entry.Is(IfdType::Ascii) && HasText(entry.tag)) {
    ApplyCanonString(data, entry.tag, TextOf(note, entry));
  } else if (isLong || isShort) {
    ApplyCanonLong(data, entry.tag, entry.value);
  } else if (entry.Is(IfdType::Short) && entry.count >= kSmallestArray && HasArray(entry.tag)) {
    ApplyArray(data, note, entry);
  }
}

}  // namespace

void ReadCanonMakerNote(ExifData& data, const MakerNote& note) {
  if (note.offset > std::numeric_limits<std::uint32_t>::max()) return;
  try {
    IfdWalker walker(note.source, note.order, PolicyOf(note.form));
    walker.Walk(static_cast<std::uint32_t>(note.offset), [&](const IfdEntry& entry) {
      Apply(data, note, entry);
      return Visit::Continue;
    });
  } catch (ExifException) {
    return;  // in a file too: it never costs the fields behind the note
  }
}

}  // namespace ml::metadata
