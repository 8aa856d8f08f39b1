#include "imagefiles/edits/format_edits.h"

#include <algorithm>
#include <iterator>

#include "imagefiles/edits/iptc_rows.h"

namespace ml::imagefiles {
namespace {

constexpr FormatEdits kEdits[] = {
    {.format = Format::Jpeg, .writeIptc = WriteIptcIntoJpeg},
    {.format = Format::Jp2, .setComment = SetCommentAsCaption, .writeIptc = WriteIptcIntoJp2},
    {.format = Format::Crw, .writeIptc = WriteIptcIntoThm},
    {.format = Format::Tiff},
    {.format = Format::Eos1DRaw},
    {.format = Format::Nef},
    {.format = Format::Avi, .writeIptc = WriteIptcIntoThm},
    {.format = Format::Psd, .setComment = SetCommentAsCaption, .writeIptc = WriteIptcIntoPsd},
    {.format = Format::Gif},
    {.format = Format::Bmp},
    {.format = Format::Mrw},
    {.format = Format::Orf},
    {.format = Format::Raf},
    {.format = Format::Pef},
    {.format = Format::Png, .setComment = SetPngComment, .writeIptc = WriteIptcIntoPng},
};

}  // namespace

const FormatEdits& EditsOf(Format format) { return *std::ranges::find(kEdits, format, &FormatEdits::format); }

}  // namespace ml::imagefiles
