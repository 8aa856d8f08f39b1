#include "imagefiles/tools/extract_jpegs.h"

#include <algorithm>
#include <memory>

#include "imagefiles/messages.h"
#include "imagefiles/raw_files.h"
#include "imagefiles/raw_pictures.h"
#include "imagefiles/thm_file.h"
#include "imagefiles/tools/extracted_jpeg.h"
#include "imagefiles/tools/messages.h"
#include "imagefiles/tools/output_names.h"
#include "imagefiles/tools/shooting_data.h"
#include "imagefiles/tools/tool_loop.h"
#include "metadata/exif_block.h"
#include "platform/atomic_file.h"
#include "platform/companion_set.h"
#include "platform/data_folders.h"
#include "platform/dates.h"
#include "platform/errors.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/readable_file.h"

namespace ml::imagefiles {
namespace {

using platform::UserError;

constexpr std::string_view kDirectory = "extracted", kExtension = ".jpg";

/// The file beside `path` in the given directory that bears its name in any spelling.
std::optional<std::string> FindExisting(const std::string& path) {
  const std::string directory = platform::normaliseDirectory(platform::DirectoryOf(path));
  const auto name = platform::DirIndex(directory).Find(platform::FileName(path));
  if (name) return platform::JoinPath(directory, *name);
  return platform::IsNameTaken(path) ? std::optional(path) : std::nullopt;  // a link that leads nowhere
}

Format RawFormatOf(const std::string& image) {
  const auto format = FindFormat(image)->format;
  return format == Format::Tiff ? Format::Eos1DRaw : format;
}

/// Nothing if the file is in order but has no JPEG in it.
std::optional<std::vector<std::byte>> ReadEmbedded(const std::string& image, Format format) try {
  const platform::ReadableFile file(image);
  const metadata::FileSource source(file);
  const auto range = FindRawJpeg(format, source);
  if (!range) return std::nullopt;
  auto bytes = file.Range(range->position, range->size);
  if (!metadata::ByteView(bytes, metadata::ByteOrder::Big).StartsWith("\xff\xd8")) {
    throw UserError(tool_messages::NoJpegIn(image));
  }
  const bool reachesEnd = range->End() >= file.Size();
  if (bytes.size() != range->size || (reachesEnd && IsCutShort(bytes))) throw UserError(tool_messages::CutShort(image));
  return bytes;
} catch (metadata::ExifException) {
  throw UserError(tool_messages::NoJpegIn(image));
}

imaging::Turn TurnOf(const std::string& image, Format format) {
  const platform::ReadableFile file(image);
  return RawTurn(format, metadata::FileSource(file));
}

std::optional<std::int64_t> TimeOf(const metadata::ExifData& exif) {
  constexpr std::int64_t kSecond = 1'000'000'000;
  const auto date = platform::ParseDateTime(exif.dateTime, platform::DateForm::DotsUnchecked);
  const auto time = date ? platform::ToTime(*date) : std::nullopt;
  return time ? std::optional(*time * kSecond) : std::nullopt;
}

void WriteJpeg(const std::string& path, const ExtractedJpeg& jpeg, std::optional<std::int64_t> time,
               const ExtractSettings& settings, const EditTools& tools) {
  if (tools.edit.insteadOfWriting) return tools.edit.insteadOfWriting(path);
  std::optional<platform::AtomicFile> file;
  try {
    file.emplace(path, platform::AtomicFileOptions{.existing = settings.overwrite ? platform::ExistingFile::Replace
                                                                                  : platform::ExistingFile::Refuse,
                                                   .recorder = tools.edit.recorder,
                                                   .modificationTime = time,
                                                   .stateDirectory = tools.edit.stateDirectory,
                                                   .fileSystem = tools.edit.fileSystem});
  } catch (const UserError& error) {
    throw UserError(tool_messages::NotOpened(path, ReasonOf(error)));
  }
  try {
    file->Write(jpeg.bytes);
    file->Commit();
  } catch (const UserError& error) {
    throw UserError(tool_messages::NotWritten(path, ReasonOf(error)));
  }
}

/// Why an image is passed over.
std::optional<std::string> Refusal(const std::string& image, Format format, const std::string& viewing,
                                   const ExtractSettings& settings) {
  if (format != Format::Eos1DRaw) return std::nullopt;
  if (viewing.empty()) return tool_messages::NoViewingJpeg(image);
  if (!settings.viewingJpegs) return tool_messages::ViewingJpegUnwanted(image);
  return std::nullopt;
}

}  // namespace

bool MayHoldJpeg(const std::string& path) { return IsAnyRawFile(path); }

std::string DefaultExtractDirectory(const std::string& image) {
  return platform::JoinPath(platform::DirectoryOf(image), kDirectory);
}

bool EnsureExtractDirectory(const std::string& directory, platform::Interaction& ask) {
  if (platform::IsDirectory(directory)) return true;
  if (platform::IsNameTaken(directory)) throw UserError(platform::messages::kOutputIsNoDirectory + directory);
  const auto answer = ask.ask({.text = tool_messages::AskCreateDirectory(directory),
                               .caption = std::string(tool_messages::kExtractTitle),
                               .icon = platform::BoxIcon::Question,
                               .buttons = platform::Buttons::YesNo});
  if (answer != platform::Button::Yes) return false;
  platform::ensureDirectory(directory);
  return true;
}

std::vector<std::string> ExtractedNames(const std::vector<std::string>& images, const std::string& directory) {
  return OutputNames(images, directory, kExtension);
}

ToolItem ExtractJpeg(const std::string& image, const std::string& output, const ExtractSettings& settings,
                     const EditTools& tools) {
  const auto skipped = [&](const std::string& why) {
    return ToolItem{.path = image, .result = ToolResult::Skipped, .note = why};
  };
  if (!platform::Exists(image)) throw UserError(tool_messages::NoJpegIn(image));
  if (!MayHoldJpeg(image)) return skipped(tool_messages::NoRawFile(image));
  const auto format = RawFormatOf(image);
  const auto viewing = format == Format::Eos1DRaw ? platform::FindCompanion(image, kExtension) : "";
  if (const auto refusal = Refusal(image, format, viewing, settings)) return skipped(*refusal);
  const auto existing = FindExisting(output);
  const bool isViewing = existing && !viewing.empty() && platform::SameFile(*existing, viewing);
  if (existing && (!settings.overwrite || isViewing)) {
    return {.path = image, .output = *existing, .result = ToolResult::Kept, .note = tool_messages::Exists(*existing)};
  }

  const metadata::ExifData exif(image, tools.options.ForExif());
  auto bytes = viewing.empty() ? ReadEmbedded(image, format) : platform::ReadFile(viewing);
  if (!bytes) return {.path = image, .result = ToolResult::Failed, .note = tool_messages::NoJpegIn(image)};
  ExtractedJpeg jpeg{*std::move(bytes)};
  const bool exifWanted = settings.exif && viewing.empty() && HasShootingData(exif);
  const bool hasThm = format == Format::Crw && !exif.exifBlock.empty();
  FinishJpeg(jpeg, viewing.empty() ? TurnOf(image, format) : imaging::Turn::None,
             {.exif = exifWanted ? &exif : nullptr, .replaceExif = hasThm, .upright = settings.rotate});
  const auto path = existing.value_or(output);
  WriteJpeg(path, jpeg, settings.timestamp ? TimeOf(exif) : std::nullopt, settings, tools);
  return {.path = image, .output = path, .note = jpeg.note};
}

ToolReport ExtractJpegs(const std::vector<std::string>& images, const ExtractSettings& settings, const EditTools& tools,
                        const ToolRun& run) {
  std::vector<std::string> raw;
  std::ranges::copy_if(images, std::back_inserter(raw), MayHoldJpeg);
  const auto names = ExtractedNames(raw, settings.directory);
  ToolNotes notes(run);
  std::size_t next = 0;
  ForEachImage(images, run, notes, tool_messages::FileOf, [&](const std::string& image, std::size_t) {
    const bool isRaw = next < raw.size() && raw[next] == image;
    notes.Add(ExtractJpeg(image, isRaw ? names[next++] : "", settings, tools));
  });
  return notes.Take();
}

}  // namespace ml::imagefiles
