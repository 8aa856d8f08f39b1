#include "imaging/read_whole.h"

#include "imaging/decoded_picture.h"

namespace ml::imaging {

std::vector<std::byte> ReadWhole(const metadata::ByteSource& source) {
  if (source.Size() > kMaxWholeFile) Refuse("The file is too large");
  auto bytes = source.ReadUpTo(0, kMaxWholeFile);
  if (bytes.empty()) Refuse("The file is empty");
  return bytes;
}

}  // namespace ml::imaging
