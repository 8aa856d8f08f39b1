#include "imagefiles/edits/icc_edits.h"

#include <sys/stat.h>

#include <array>
#include <vector>

#include "imagefiles/messages.h"
#include "imaging/colour/colour_profile.h"
#include "metadata/edit/apply_edit.h"
#include "metadata/edit/icc_writer.h"
#include "metadata/edit/image_data.h"
#include "metadata/edit/multi_picture.h"
#include "metadata/icc_carriers.h"
#include "metadata/jpeg_segments.h"
#include "metadata/messages.h"
#include "platform/errors.h"
#include "platform/file_system.h"

namespace ml::imagefiles {
namespace {

using Bytes = std::vector<std::byte>;

constexpr std::array kStartOfImage{std::byte{0xff}, std::byte{metadata::jpeg_marker::kStartOfImage}};
constexpr std::size_t kMaxReadable = 1'048'576;  ///< bytes; longer profiles are left to other readers

bool Exists(const std::string& path, platform::FileSystem& fileSystem) {
  struct stat status {};
  return fileSystem.Stat(path, platform::Links::Follow, status) == 0;
}

Bytes ReadProfile(const std::string& path, platform::FileSystem& fileSystem) {
  if (path.empty()) throw platform::UserError(messages::kNoProfile);
  if (!Exists(path, fileSystem)) throw platform::UserError(messages::kProfileMissing);
  Bytes profile;
  try {
    const platform::ReadableFile file(path, fileSystem);
    // One byte more, so that what is too long shows.
    profile = metadata::FileSource(file).ReadUpTo(0, imaging::kMaxColourProfile + 1);
  } catch (const platform::UserError&) {
    throw platform::UserError(messages::kProfileUnreadable);
  }
  if (!imaging::ColourProfile::FromMemory(profile)) throw platform::UserError(messages::NotAProfile(path));
  return profile;
}

}  // namespace

bool EmbedIccProfile(ImageFile& file, const std::string& profilePath, const EditTools& tools) {
  if (file.Row().format != Format::Jpeg) throw platform::UserError(messages::kJpegUnreadable);
  const auto profile = ReadProfile(profilePath, *tools.edit.fileSystem);
  if (!file.MakeWritable()) throw platform::UserError(std::string(messages::kUpdateReadOnly));
  file.Wrote();
  const platform::ReadableFile jpeg(file.Path(), *tools.edit.fileSystem);
  const metadata::FileSource source(jpeg);
  if (source.ReadUpTo(0, kStartOfImage.size()) != Bytes(kStartOfImage.begin(), kStartOfImage.end())) {
    throw platform::UserError(messages::kJpegUnreadable);
  }
  metadata::EditedFile edited(source);
  if (!metadata::WriteIccProfile(edited, profile)) return false;
  metadata::RealignMultiPicture(edited);
  metadata::RequireSameImageData(edited, metadata::JpegRest);
  const bool isThere = profile.size() > kMaxReadable || metadata::ReadJpegIccProfile(edited) == profile;
  if (!isThere) throw platform::UserError(metadata::messages::NotAsWritten(file.Path()));
  return metadata::ApplyEdit(jpeg, edited, tools.edit);
}

}  // namespace ml::imagefiles
