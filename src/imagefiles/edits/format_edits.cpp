#include "imagefiles/edits/format_edits.h"

#include <algorithm>
#include <iterator>

#include "imagefiles/edits/bmp_edits.h"
#include "imagefiles/edits/jpeg_turn.h"

namespace ml::imagefiles {
namespace {

constexpr FormatEdits kEdits[] = {
    {.format = Format::Jpeg, .rotate = RotateJpeg},
    {.format = Format::Jp2},
    {.format = Format::Crw},
    {.format = Format::Tiff},
    {.format = Format::Eos1DRaw},
    {.format = Format::Nef},
    {.format = Format::Avi},
    {.format = Format::Psd},
    {.format = Format::Gif},
    {.format = Format::Bmp, .rotate = RotateBmp},
    {.format = Format::Mrw},
    {.format = Format::Orf},
    {.format = Format::Raf},
    {.format = Format::Pef},
    {.format = Format::Png},
};

}  // namespace

const FormatEdits& EditsOf(Format format) { return *std::ranges::find(kEdits, format, &FormatEdits::format); }

}  // namespace ml::imagefiles
