#include "imagefiles/edits/format_edits.h"

#include <algorithm>
#include <iterator>

#include "imagefiles/edits/bmp_edits.h"
#include "imagefiles/edits/crw_edits.h"
#include "imagefiles/edits/eos1d_edits.h"
#include "imagefiles/edits/iptc_rows.h"
#include "imagefiles/edits/jpeg_edits.h"
#include "imagefiles/edits/jpeg_turn.h"
#include "imagefiles/edits/tiff_edits.h"
#include "imagefiles/edits/tiff_rotation.h"

namespace ml::imagefiles {
namespace {

constexpr FormatEdits kEdits[] = {
    {.format = Format::Jpeg,
     .rotate = RotateJpeg,
     .setComment = SetJpegComment,
     .writeIptc = WriteIptcIntoJpeg,
     .adjustDateTime = AdjustJpegDateTime},
    {.format = Format::Jp2, .setComment = SetCommentAsCaption, .writeIptc = WriteIptcIntoJp2},
    {.format = Format::Crw,
     .rotate = RotateCrw,
     .setComment = SetCrwComment,
     .writeIptc = WriteIptcIntoThm,
     .adjustDateTime = AdjustCrwDate},
    {.format = Format::Tiff,
     .rotate = RotateTiff,
     .setComment = SetTiffComment,
     .writeIptc = WriteIptcToTiff,
     .adjustDateTime = AdjustTiffDates},
    {.format = Format::Eos1DRaw,
     .rotate = RotateEos1D,
     .setComment = SetEos1DComment,
     .writeIptc = WriteIptcToEos1D,
     .adjustDateTime = AdjustEos1DDates},
    {.format = Format::Nef,
     .rotate = RotateByTag,
     .setComment = SetCommentAsCaption,
     .writeIptc = WriteIptcToTiff,
     .adjustDateTime = AdjustTiffDates},
    {.format = Format::Avi,
     .setComment = SetAviComment,
     .writeIptc = WriteIptcIntoThm,
     .adjustDateTime = AdjustAviDate},
    {.format = Format::Psd, .setComment = SetCommentAsCaption, .writeIptc = WriteIptcIntoPsd},
    {.format = Format::Gif},
    {.format = Format::Bmp, .rotate = RotateBmp},
    {.format = Format::Mrw, .adjustDateTime = AdjustTiffDates},
    {.format = Format::Orf, .rotate = RotateByTag, .setComment = SetTiffComment, .adjustDateTime = AdjustTiffDates},
    {.format = Format::Raf, .rotate = RotateByPresentTag, .adjustDateTime = AdjustTiffDates},
    {.format = Format::Pef, .adjustDateTime = AdjustTiffDates},
    {.format = Format::Png, .setComment = SetPngComment, .writeIptc = WriteIptcIntoPng},
};

}  // namespace

const FormatEdits& EditsOf(Format format) { return *std::ranges::find(kEdits, format, &FormatEdits::format); }

}  // namespace ml::imagefiles
