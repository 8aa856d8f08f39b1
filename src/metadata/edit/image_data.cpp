#include "metadata/edit/image_data.h"

#include <algorithm>

#include "metadata/edit/jpeg_rewriter.h"
#include "metadata/jp2_boxes.h"
#include "metadata/jpeg_segments.h"
#include "metadata/messages.h"
#include "metadata/png_chunks.h"
#include "metadata/psd_resources.h"
#include "platform/errors.h"

namespace ml::metadata {
namespace {

[[noreturn]] void RefuseDamaged() { throw platform::UserError(messages::kDamagedForEdit); }

}  // namespace

std::vector<FileRange> JpegImageData(const ByteSource& file) {
  JpegSegments segments(file);
  while (const auto segment = segments.Next()) {
    if (segment->cut) break;
    if (segment->marker == jpeg_marker::kStartOfScan) return {{segment->offset, file.Size() - segment->offset}};
  }
  RefuseDamaged();
}

std::vector<FileRange> JpegRest(const ByteSource& file) { return {CompressedData(file)}; }

std::vector<FileRange> PngImageData(const ByteSource& file) {
  std::vector<FileRange> ranges;
  PngChunks chunks(file);
  while (const auto chunk = chunks.Next()) {
    if (chunk->cut) break;
    if (chunk->type == "IDAT") ranges.push_back(chunk->data);
    if (chunk->type == "IEND" && !ranges.empty()) return ranges;
  }
  RefuseDamaged();
}

std::vector<FileRange> PsdImageData(const ByteSource& file) {
  const auto psd = ReadPsdFile(file);
  if (!psd || psd->mergedImage == 0) RefuseDamaged();
  const auto start = psd->resourceArea.End();
  return {{start, file.Size() - start}};
}

std::vector<FileRange> Jp2ImageData(const ByteSource& file) {
  const auto jp2 = ReadJp2File(file);
  if (!jp2 || jp2->boxes.empty() || jp2->codeStream.size == 0) RefuseDamaged();
  return {jp2->codeStream};
}

void RequireSameImageData(const EditedFile& edited, ImageDataFinder find) {
  const auto before = find(edited.Original());
  const auto after = find(edited);
  const auto isSame = [&](const FileRange& old, const FileRange& now) {
    return edited.Keeps(now, old) || SameBytes(edited.Original(), old, edited, now);
  };
  if (!std::ranges::equal(before, after, isSame)) throw platform::UserError(messages::kImageDataChanged);
}

}  // namespace ml::metadata
