#include "imagefiles/edits/tiff_file_edit.h"

#include <algorithm>
#include <iterator>

#include "imagefiles/messages.h"
#include "metadata/edit/apply_edit.h"
#include "metadata/edit/tiff_image_data.h"
#include "metadata/tiff_raw.h"
#include "platform/errors.h"

namespace ml::imagefiles {
namespace {

using metadata::TiffMagic;

template <std::uint64_t base>
std::uint64_t Fixed(const metadata::ByteSource&) {
  return base;
}

struct TiffForm {
  Format format;
  std::uint64_t (*base)(const metadata::ByteSource& file);
  TiffMagic magic;
  std::string_view invalid;
};
constexpr TiffForm kForms[] = {
    {Format::Tiff, Fixed<0>, TiffMagic::Required, messages::kInvalidTiff},
    {Format::Eos1DRaw, Fixed<0>, TiffMagic::Required, messages::kInvalidTiff},
    {Format::Nef, Fixed<0>, TiffMagic::Required, messages::kInvalidNef},
    {Format::Orf, Fixed<0>, TiffMagic::Any, messages::kInvalidOrf},
    {Format::Raf, metadata::FindRafTiffBase, TiffMagic::Required, messages::kInvalidRaf},
    {Format::Pef, Fixed<0>, TiffMagic::Required, messages::kInvalidPef},
    {Format::Mrw, Fixed<metadata::kMrwTiffBase>, TiffMagic::Required, messages::kInvalidMrw},
};

[[noreturn]] void Refuse(metadata::ExifException reason, const TiffForm& form, const std::string& path) {
  switch (reason) {
    case metadata::ExifException::BadHeader:
      throw platform::UserError(std::string(form.invalid));
    case metadata::ExifException::LimitExceeded:
      throw platform::UserError(messages::NoRoomInTiff(path));
    case metadata::ExifException::DirectoryFull:
      throw platform::UserError(messages::TooManyEntries(path));
    default:
      throw platform::UserError(messages::DamagedForEdit(path));
  }
}

}  // namespace

std::optional<TiffPlace> FindTiffPlace(Format format, const metadata::ByteSource& file) {
  const auto* form = std::ranges::find(kForms, format, &TiffForm::format);
  return form == std::end(kForms) ? std::nullopt : std::optional(TiffPlace{form->base(file), form->magic});
}

void EditTiffFile(const ImageFile& image, const TiffFileEdit& edit, const EditTools& tools) {
  const auto& form = *std::ranges::find(kForms, image.Row().format, &TiffForm::format);
  const platform::ReadableFile file(image.Path(), *tools.edit.fileSystem);
  const metadata::FileSource source(file);
  metadata::EditedFile edited(source);
  try {
    const auto base = form.base(source);
    edit(edited, base);
    if (edited.Touched()) metadata::RequireSameImageData(edited, base, form.magic);
  } catch (metadata::ExifException reason) {
    Refuse(reason, form, image.Path());
  }
  metadata::ApplyEdit(file, edited, tools.edit);
}

}  // namespace ml::imagefiles
