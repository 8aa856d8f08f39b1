#include "imagefiles/edits/iptc_rows.h"

#include <functional>

#include "imagefiles/edits/companion_edits.h"
#include "imagefiles/edits/format_edits.h"
#include "imagefiles/messages.h"
#include "metadata/edit/apply_edit.h"
#include "metadata/edit/image_data.h"
#include "metadata/edit/iptc_jp2.h"
#include "metadata/edit/iptc_jpeg.h"
#include "metadata/edit/iptc_png.h"
#include "metadata/edit/iptc_psd.h"
#include "metadata/edit/multi_picture.h"
#include "metadata/edit/png_text_chunk.h"
#include "metadata/iptc/iptc_caption.h"
#include "metadata/messages.h"
#include "platform/errors.h"

namespace ml::imagefiles {

namespace {

using metadata::EditedFile;
using metadata::IptcBlock;

/// Lets `edit` change the file, and makes that real if the picture in it stays as it is. Throws UserError naming the
/// file.
void EditAroundPicture(const std::string& path, metadata::ImageDataFinder picture,
                       const std::function<void(EditedFile&)>& edit, const EditTools& tools) {
  const auto refuse = [&](const char* reason) { throw platform::UserError(messages::NotWritten(path, reason)); };
  const auto guarded = [&](EditedFile& edited) {
    try {
      edit(edited);
      metadata::RequireSameImageData(edited, picture);
    } catch (const platform::UserError& error) {
      refuse(error.what());
    } catch (metadata::ExifException) {
      refuse(metadata::messages::kDamagedForEdit);
    }
  };
  metadata::EditFile(path, guarded, tools.edit);
}

}  // namespace

void WriteIptcIntoJpeg(ImageFile& file, const IptcBlock& block, const EditTools& tools) {
  const auto edit = [&](EditedFile& edited) {
    metadata::WriteJpegIptc(edited, block);
    metadata::RealignMultiPicture(edited);
  };
  EditAroundPicture(file.Path(), metadata::JpegImageData, edit, tools);
}

void WriteIptcIntoPng(ImageFile& file, const IptcBlock& block, const EditTools& tools) {
  const auto caption = tools.options.iptcComments ? metadata::CaptionIsComment::Yes : metadata::CaptionIsComment::No;
  const auto edit = [&](EditedFile& edited) { metadata::WritePngIptc(edited, block, caption); };
  EditAroundPicture(file.Path(), metadata::PngImageData, edit, tools);
}

void WriteIptcIntoPsd(ImageFile& file, const IptcBlock& block, const EditTools& tools) {
  const auto edit = [&](EditedFile& edited) { metadata::WritePsdIptc(edited, block); };
  EditAroundPicture(file.Path(), metadata::PsdImageData, edit, tools);
}

void WriteIptcIntoJp2(ImageFile& file, const IptcBlock& block, const EditTools& tools) {
  const auto edit = [&](EditedFile& edited) { metadata::WriteJp2Iptc(edited, block); };
  EditAroundPicture(file.Path(), metadata::Jp2ImageData, edit, tools);
}

void WriteIptcIntoThm(ImageFile& file, const IptcBlock& block, const EditTools& tools) {
  const auto thm = tools.companions.Find(file.Path()).thm;
  if (thm.empty()) throw platform::UserError(messages::CannotHoldIptc(file.Path()));
  WriteCompanionIptc(thm, block, tools);
}

void SetCommentAsCaption(ImageFile& file, const std::string& text, const EditTools& tools) {
  try {
    EditsOf(file.Row().format).writeIptc(file, metadata::WithCaption(file.Exif(), text), tools);
  } catch (const platform::UserError& error) {
    throw platform::UserError(messages::CaptionNotWritten(error.what()));
  }
}

void SetPngComment(ImageFile& file, const std::string& text, const EditTools& tools) {
  if (tools.options.iptcComments) return SetCommentAsCaption(file, text, tools);
  const auto edit = [&](EditedFile& edited) {
    metadata::SetPngText(edited, "Description", text, metadata::PngTextForm::Text);
  };
  EditAroundPicture(file.Path(), metadata::PngImageData, edit, tools);
}

}  // namespace ml::imagefiles
