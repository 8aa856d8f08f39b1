#include "imagefiles/eos1d_test.h"

#include "metadata/byte_source.h"
#include "metadata/ifd.h"
#include "metadata/tiff_tags.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

constexpr std::uint64_t kSmallestRaw = 1'048'576;
constexpr std::uint32_t kThumbnailSide = 192;  ///< of the picture in the first directory of these cameras

/// Whether `tag` of the first directory is the side of such a picture.
bool FirstDirectoryFits(const metadata::ByteSource& source, std::uint16_t tag) {
  const auto header = metadata::ReadTiffHeader(source, 0);
  if (!header || !header->IsTiff()) return false;
  bool fits = false;
  metadata::IfdWalker walker(source, header->order, {.followNext = false});
  walker.Walk(header->firstDirectory, [&](const metadata::IfdEntry& entry) {
    if (entry.tag != tag) return metadata::Visit::Continue;
    fits = entry.value == kThumbnailSide;
    return metadata::Visit::Stop;
  });
  return fits;
}

bool RowsFit(const platform::ReadableFile& file) {
  return file.Size() >= kSmallestRaw && FirstDirectoryFits(metadata::FileSource(file), metadata::tiff_tag::kHeight);
}

template <class Test>
bool FileFits(const std::string& path, Test&& test) {
  if (!platform::EndsWithNoCase(path, ".tif")) return false;
  try {
    return test(platform::ReadableFile(path));
  } catch (const platform::UserError&) {
    return false;
  } catch (metadata::ExifException) {
    return false;
  }
}

}  // namespace

bool catalogueEos1D(const std::string& path) { return FileFits(path, RowsFit); }

bool IsEos1DRawFile(const std::string& path) {
  return FileFits(path, [](const platform::ReadableFile& file) {
    return FirstDirectoryFits(metadata::FileSource(file), metadata::tiff_tag::kWidth) || RowsFit(file);
  });
}

}  // namespace ml::imagefiles
