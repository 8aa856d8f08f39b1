#include "imagefiles/eos1d_test.h"

#include "metadata/byte_source.h"
#include "metadata/ifd.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

constexpr std::uint64_t kSmallestRaw = 1'048'576;
constexpr std::uint16_t kImageLength = 0x101;
constexpr std::uint32_t kThumbnailLength = 192;  ///< rows of the picture in the first directory of these cameras

bool FirstDirectoryFits(const metadata::ByteSource& source) {
  const auto header = metadata::ReadTiffHeader(source, 0);
  if (!header || !header->IsTiff()) return false;
  bool fits = false;
  metadata::IfdWalker walker(source, header->order, {.followNext = false});
  walker.Walk(header->firstDirectory, [&](const metadata::IfdEntry& entry) {
    if (entry.tag != kImageLength) return metadata::Visit::Continue;
    fits = entry.value == kThumbnailLength;
    return metadata::Visit::Stop;
  });
  return fits;
}

}  // namespace

bool catalogueEos1D(const std::string& path) {
  if (!platform::EndsWithNoCase(path, ".tif")) return false;
  try {
    const platform::ReadableFile file(path);
    if (file.Size() < kSmallestRaw) return false;
    return FirstDirectoryFits(metadata::FileSource(file));
  } catch (const platform::UserError&) {
    return false;
  } catch (metadata::ExifException) {
    return false;
  }
}

}  // namespace ml::imagefiles
