#include "imagefiles/edits/format_edits.h"

#include <algorithm>
#include <iterator>

#include "imagefiles/edits/bmp_edits.h"
#include "imagefiles/edits/iptc_rows.h"
#include "imagefiles/edits/jpeg_edits.h"
#include "imagefiles/edits/jpeg_turn.h"
#include "imagefiles/edits/thm_edits.h"

namespace ml::imagefiles {
namespace {

constexpr FormatEdits kEdits[] = {
    {.format = Format::Jpeg,
     .rotate = RotateJpeg,
     .setComment = SetJpegComment,
     .writeIptc = WriteIptcIntoJpeg,
     .adjustDateTime = AdjustJpegDateTime},
    {.format = Format::Jp2, .setComment = SetCommentAsCaption, .writeIptc = WriteIptcIntoJp2},
    {.format = Format::Crw, .writeIptc = WriteIptcIntoThm},
    {.format = Format::Tiff},
    {.format = Format::Eos1DRaw},
    {.format = Format::Nef},
    {.format = Format::Avi, .writeIptc = WriteIptcIntoThm, .adjustDateTime = AdjustThmDateTime},
    {.format = Format::Psd, .setComment = SetCommentAsCaption, .writeIptc = WriteIptcIntoPsd},
    {.format = Format::Gif},
    {.format = Format::Bmp, .rotate = RotateBmp},
    {.format = Format::Mrw},
    {.format = Format::Orf},
    {.format = Format::Raf},
    {.format = Format::Pef},
    {.format = Format::Png, .setComment = SetPngComment, .writeIptc = WriteIptcIntoPng},
};

}  // namespace

const FormatEdits& EditsOf(Format format) { return *std::ranges::find(kEdits, format, &FormatEdits::format); }

}  // namespace ml::imagefiles
