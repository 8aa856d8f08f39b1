#include "metadata/edit/tiff_comment.h"

#include <cstdint>

#include "metadata/byte_writer.h"
#include "platform/text.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kEncoding("ASCII\0\0\0", 8);
constexpr std::uint32_t kSmallestComment = 16, kLargestComment = 1000;
constexpr std::uint32_t kSmallestDescription = 9, kLargestDescription = 1024;

struct Field {
  std::uint32_t offset = 0, size = 0;
};

/// The rest of the field becomes zeros; a text that fills it has none behind it.
bool WriteField(EditedFile& file, const Field& field, std::string_view prefix, std::string_view text) {
  if (field.offset > file.Size() || field.size > file.Size() - field.offset) return false;
  ByteWriter out(ByteOrder::Big);
  out.Text(prefix);
  out.Text(platform::CutToBytes(text, field.size - prefix.size()));
  out.Zeros(field.size - out.Size());
  file.Overwrite(field.offset, out.View());
  return true;
}

}  // namespace

bool WriteTiffComment(EditedFile& file, const ExifData& read, std::string_view text) {
  const Field comment{read.userCommentOffset, read.userCommentCount};
  if (comment.offset != 0 && comment.size >= kSmallestComment && comment.size <= kLargestComment) {
    return WriteField(file, comment, kEncoding, text);
  }
  const Field description{read.imageDescriptionOffset, read.imageDescriptionCount};
  if (description.offset != 0 && description.size >= kSmallestDescription && description.size <= kLargestDescription) {
    return WriteField(file, description, "", text);
  }
  return false;
}

}  // namespace ml::metadata
