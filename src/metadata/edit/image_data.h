#pragma once

#include <functional>
#include <vector>

#include "metadata/edit/edited_file.h"

/// The compressed pictures of files, which only turning may change.
namespace ml::metadata {

/// The stretches of a file that make up its picture. Throws UserError if the file has none, or ends before or inside.
using ImageDataFinder = std::vector<FileRange> (*)(const ByteSource& file);

/// From the first scan to the end of the file.
std::vector<FileRange> JpegImageData(const ByteSource& file);
/// The same, but of a file without a scan all that stands behind its segments: for edits that do not need the picture.
std::vector<FileRange> JpegRest(const ByteSource& file);
/// The data of all IDAT chunks.
std::vector<FileRange> PngImageData(const ByteSource& file);
/// All that stands behind the image resources.
std::vector<FileRange> PsdImageData(const ByteSource& file);
/// The code stream.
std::vector<FileRange> Jp2ImageData(const ByteSource& file);

/// Throws UserError if the picture is not byte for byte what it was, or if there was none that is whole.
void RequireSameImageData(const EditedFile& edited, ImageDataFinder find);

}  // namespace ml::metadata
