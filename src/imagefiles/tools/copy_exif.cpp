#include "imagefiles/tools/copy_exif.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "imagefiles/edits/jpeg_edits.h"
#include "imagefiles/edits/tiff_file_edit.h"
#include "imagefiles/eos1d_test.h"
#include "imagefiles/messages.h"
#include "imagefiles/raw_files.h"
#include "imagefiles/thm_file.h"
#include "imagefiles/tools/messages.h"
#include "imagefiles/tools/shooting_data.h"
#include "imagefiles/tools/tool_loop.h"
#include "metadata/edit/exif_block_builder.h"
#include "metadata/edit/iptc_tiff.h"
#include "metadata/edit/tiff_exif.h"
#include "metadata/exif_block.h"
#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

using metadata::EditedFile;
using metadata::ExifData;
using metadata::ExifOrigin;
using platform::UserError;

constexpr std::string_view kImageNames[] = {".jpg", ".jpe", ".jpeg", ".tif", ".tiff"};
/// What the conversion of raw files makes, and what web pages show.
constexpr std::string_view kConvertedNames[] = {"_std.jpg", "l.jpg", "c.jpg", "l.tif", "c.tif"};

/// An image, read once for all that take its data.
struct Source {
  explicit Source(const std::string& image, const ImageFileOptions& options)
      : path(image), exif(image, options.ForExif()) {
    if (const auto* row = FindFormat(image)) format = exif.isEos1DRaw ? Format::Eos1DRaw : row->format;
  }

  std::string path;
  ExifData exif;
  std::optional<Format> format;
};

void WriteTiffBlock(EditedFile& tiff, std::span<const std::byte> segment) {
  if (segment.size() < metadata::kExifSegmentHead) throw metadata::ExifException::BadHeader;
  const metadata::MemorySource block(segment.subspan(metadata::kExifSegmentHead));
  WriteTiffExif(tiff, {block});
}

/// The directories as the file has them, in its EXIF block or, where it builds on TIFF, in itself. False if there are
/// none.
bool WriteOwnDirectories(EditedFile& tiff, const Source& source) {
  if (!source.exif.exifBlock.empty()) {
    WriteTiffBlock(tiff, source.exif.exifBlock);
    return true;
  }
  const platform::ReadableFile file(source.path);
  const metadata::FileSource bytes(file);
  const auto place = source.format ? FindTiffPlace(*source.format, bytes) : std::nullopt;
  if (!place || source.exif.exifIfdEntryCount == 0) return false;
  WriteTiffExif(tiff, {bytes, place->base, place->magic});
  return true;
}

/// Else, and where they are damaged, what the record knows.
void WriteToTiff(EditedFile& tiff, const Source& source) {
  try {
    if (WriteOwnDirectories(tiff, source)) return;
  } catch (metadata::ExifException) {
  }
  WriteTiffBlock(tiff, metadata::BuildExifBlock(source.exif));
}

void CopyToTiff(ImageFile& target, const Source& source, const EditTools& tools) {
  target.Wrote();
  const auto edit = [&](EditedFile& tiff, std::uint64_t) {
    WriteToTiff(tiff, source);
    if (!source.exif.iptc.empty()) metadata::WriteTiffIptc(tiff, {source.exif.iptc, source.exif.iptcSurroundings});
  };
  EditTiffFile(target, edit, tools);
}

void CopyToJpeg(ImageFile& target, const Source& source, const EditTools& tools) {
  auto exif = source.exif;
  if (exif.exifBlock.empty()) {
    const platform::ReadableFile file(source.path);
    const metadata::FileSource bytes(file);
    exif.exifBlock = metadata::BuildExifBlock(exif, &bytes);
  }
  WriteExifBlock(target, exif, 0, tools);
}

/// The file that takes the data of images of this name, which may be its companion.
std::unique_ptr<ImageFile> OpenTarget(const std::string& path, const ImageFileOptions& options) {
  auto file = CreateImageFile(path, options);
  if (!file) throw UserError(messages::NotAnImage(path));
  const auto& row = file->Row();
  const bool isRaw = row.format == Format::Tiff && catalogueEos1D(path);
  const auto& refusal = isRaw ? RowOf(Format::Eos1DRaw).exifCopyRefusal : row.exifCopyRefusal;
  if (!refusal.empty()) throw UserError(std::string(refusal));
  if (row.exifCopyTarget == ExifCopyTarget::No) throw UserError(tool_messages::TakesNoExif(path));
  if (row.exifCopyTarget == ExifCopyTarget::Yes) return file;
  const auto thm = FindThm(path);
  if (thm.empty()) throw UserError(messages::NoThm(path));
  return std::make_unique<ImageFile>(RowOf(Format::Jpeg), thm, options);
}

void Write(ImageFile& target, const Source& source, const EditTools& tools) try {
  target.Row().format == Format::Jpeg ? CopyToJpeg(target, source, tools) : CopyToTiff(target, source, tools);
} catch (const std::exception& error) {  // of a library too: it is this file's own
  throw UserError(tool_messages::CopyFailed(target.Path(), error.what()));
} catch (metadata::ExifException) {
  throw UserError(tool_messages::CopyFailed(target.Path(), messages::DamagedMetadata(source.path)));
}

CopyExifResult CopyTo(const std::string& destination, const Source& source, const EditTools& tools,
                      platform::Interaction& ask) {
  if (!platform::Exists(destination)) throw UserError(tool_messages::DestinationMissing(destination));
  if (platform::SameFile(source.path, destination)) throw UserError(tool_messages::SameFiles(destination));
  const auto target = OpenTarget(destination, tools.options);
  const auto& path = target->Path();
  if (platform::SameFile(source.path, path)) throw UserError(tool_messages::SameFiles(path));
  if (!HasShootingData(source.exif)) throw UserError(tool_messages::NoShootingData(source.path));
  if (platform::IsReadOnly(path, *tools.edit.fileSystem)) {
    const auto answer = ask.ask({.text = tool_messages::AskReadOnly(path),
                                 .caption = std::string(tool_messages::kCopyExifTitle),
                                 .icon = platform::BoxIcon::Question,
                                 .buttons = platform::Buttons::YesNo});
    if (answer != platform::Button::Yes) return CopyExifResult::Declined;
  }
  if (!target->MakeWritable()) throw UserError(tool_messages::StaysReadOnly(path));
  Write(*target, source, tools);
  return CopyExifResult::Copied;
}

class CopyRun {
 public:
  CopyRun(const CopyExifJob& job, const EditTools& tools, const ToolRun& run)
      : job_(job), tools_(tools), run_(run), notes_(run), index_(platform::normaliseDirectory(job.directory)) {}

  ToolReport Run() {
    ForEachImage(job_.sources, run_, notes_, tool_messages::ProcessingImage,
                 [this](const std::string& path, std::size_t) { CopyFrom(path); });
    return notes_.Take();
  }

 private:
  void CopyFrom(const std::string& path) {
    if (!platform::Exists(path)) throw UserError(tool_messages::SourceMissing(path));
    auto targets = FindCopyTargets(path, index_, job_.targets);
    const auto others = std::erase_if(targets, [&](const auto& target) { return platform::SameFile(path, target); });
    if (targets.empty() && others > 0) throw UserError(tool_messages::SameFiles(path));
    if (targets.empty()) return notes_.Skip(path, tool_messages::NoTarget(job_.directory));
    const Source source(path, tools_.options);
    if (!HasShootingData(source.exif)) return notes_.Skip(path, tool_messages::NoShootingData(path));
    for (const auto& target : targets) CopyOne(source, target);
  }

  void CopyOne(const Source& source, const std::string& target) {
    if (CopyTo(target, source, tools_, run_.host.ask) == CopyExifResult::Declined) {
      return notes_.Keep(source.path, target, tool_messages::ReadOnly(target));
    }
    notes_.Add({.path = source.path, .output = target});
  }

  const CopyExifJob& job_;
  const EditTools& tools_;
  const ToolRun& run_;
  ToolNotes notes_;
  platform::DirIndex index_;
};

}  // namespace

CopyExifResult CopyExif(const std::string& source, const std::string& destination, const EditTools& tools,
                        platform::Interaction& ask) {
  if (!platform::Exists(source)) throw UserError(tool_messages::SourceMissing(source));
  return CopyTo(destination, Source(source, tools.options), tools, ask);
}

std::vector<std::string> FindCopyTargets(const std::string& source, platform::DirIndex& index, CopyTargets targets) {
  const std::string stem(platform::SplitPath(source).stem);
  std::vector<std::string> found;
  const auto look = [&](std::string_view ending) {
    if (targets == CopyTargets::JpegsOnly && IsTiffName(ending)) return;
    const auto name = index.Find(stem + std::string(ending));
    if (!name) return;
    auto path = platform::JoinPath(index.Directory(), *name);
    if (platform::IsRegularFile(path)) found.push_back(std::move(path));
  };
  std::ranges::for_each(kImageNames, look);
  if (IsAnyRawFile(source)) std::ranges::for_each(kConvertedNames, look);
  return found;
}

void RequireCopyDirectory(const std::string& directory) {
  if (!platform::Exists(directory)) throw UserError(tool_messages::NoSuchDirectory(directory));
  if (!platform::IsDirectory(directory)) throw UserError(directory + platform::messages::kIsNotADirectory);
}

ToolReport CopyExifBatch(const CopyExifJob& job, const EditTools& tools, const ToolRun& run) {
  RequireCopyDirectory(job.directory);
  return CopyRun(job, tools, run).Run();
}

}  // namespace ml::imagefiles
