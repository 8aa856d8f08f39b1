#include "imagefiles/tools/export_exif.h"

#include <algorithm>
#include <memory>

#include "imagefiles/messages.h"
#include "imagefiles/tools/messages.h"
#include "imagefiles/tools/output_names.h"
#include "imagefiles/tools/tool_loop.h"
#include "metadata/exif_text.h"
#include "platform/atomic_file.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/readable_file.h"
#include "platform/text.h"

namespace ml::imagefiles {
namespace {

using platform::AtomicFile;
using platform::FileExistsAnswer;
using platform::UserError;

constexpr std::size_t kPiece = 1 << 16;

platform::AtomicFileOptions FileOptions(const EditTools& tools) {
  return {.recorder = tools.edit.recorder,
          .stateDirectory = tools.edit.stateDirectory,
          .fileSystem = tools.edit.fileSystem};
}

/// A text file that is being made, or in a dry run would be.
class TextOutput {
 public:
  TextOutput(const std::string& path, const EditTools& tools) : path_(path), tools_(tools) {
    Try([&] {
      if (!tools.edit.insteadOfWriting) file_ = std::make_unique<AtomicFile>(path, FileOptions(tools));
    });
  }
  void Add(std::string_view text) {
    text_ += text;
    if (text_.size() >= kPiece) Flush();
  }
  void Commit() {
    Flush();
    if (tools_.edit.insteadOfWriting) return tools_.edit.insteadOfWriting(path_);
    Try([&] { file_->Commit(); });
  }

 private:
  void Flush() {
    Try([&] {
      if (file_) file_->Write(text_);
    });
    text_.clear();
  }
  template <class Step>
  void Try(Step&& step) {
    try {
      step();
    } catch (const UserError& error) {
      throw UserError(tool_messages::ExportFailed(path_, ReasonOf(error)));
    }
  }

  const std::string path_;
  const EditTools& tools_;
  std::unique_ptr<AtomicFile> file_;
  std::string text_;
};

metadata::ExifData ReadRecord(const std::string& path, const EditTools& tools) {
  { const platform::ReadableFile readable(path, *tools.edit.fileSystem); }  // throws for what is no file
  return metadata::ExifData(path, tools.options.ForExif());
}

bool IsImage(const std::string& path, const std::vector<std::string>& images) {
  return FindFormat(path) != nullptr ||
         std::ranges::any_of(images, [&](const auto& image) { return platform::SameFile(image, path); });
}

class ExportRun {
 public:
  ExportRun(const std::vector<std::string>& images, const ExportSettings& settings, const platform::LocaleText& locale,
            const EditTools& tools, const ToolRun& run)
      : images_(images), settings_(settings), locale_(locale), tools_(tools), run_(run), notes_(run) {}

  ToolReport Run() {
    settings_.mode == ExportMode::LinePerImage ? WriteTable() : WriteTexts();
    return notes_.Take();
  }

 private:
  void WriteTable() {
    const auto& path = settings_.output;
    if (IsImage(path, images_)) throw UserError(tool_messages::ExportFailed(path, tool_messages::kIsAnImage));
    TextOutput table(path, tools_);
    ToolReport written;  // told of when it is true
    if (settings_.header) table.Add(ExportHeader(settings_) + "\n");
    ForEachImage(images_, run_, notes_, tool_messages::FileOf, [&](const std::string& image, std::size_t) {
      auto exif = ReadRecord(image, tools_);
      table.Add(ExportLine(settings_, exif, tools_.options.ForExif(), locale_) + "\n");
      written.push_back({.path = image, .output = path});
    });
    table.Commit();
    for (auto& item : written) notes_.Add(std::move(item));
  }

  void WriteTexts() {
    const auto names = TextFileNames(images_);
    ForEachImage(images_, run_, notes_, tool_messages::FileOf,
                 [&](const std::string& image, std::size_t i) { WriteText(image, names[i]); });
  }

  void WriteText(const std::string& image, const std::string& name) {
    auto exif = ReadRecord(image, tools_);
    const auto path = Clear(name);
    if (!path) return notes_.Keep(image, name, tool_messages::Exists(name));
    if (IsImage(*path, {image})) throw UserError(tool_messages::TextIsAnImage(*path));
    TextOutput text(*path, tools_);
    const auto properties = metadata::GetPropertiesText(exif, locale_);
    for (const auto line : platform::SplitLines(properties)) text.Add(platform::ToDisplayUtf8(line) + "\n");
    text.Commit();
    notes_.Add({.path = image, .output = *path});
  }

  /// The path to write to; nothing if what is in the way stays.
  std::optional<std::string> Clear(const std::string& path) {
    if (!platform::IsNameTaken(path)) return path;
    const auto answer = standing_ ? *standing_ : run_.host.ask.fileExists(path);
    if (answer == FileExistsAnswer::OverwriteAll || answer == FileExistsAnswer::SkipAll) standing_ = answer;
    switch (answer) {
      case FileExistsAnswer::Overwrite:
      case FileExistsAnswer::OverwriteAll:
        return path;
      case FileExistsAnswer::SaveAs:
        return run_.host.ask.saveAs({.title = "Save As",
                                     .filter = std::string(tool_messages::kExportFilter),
                                     .defaultExtension = std::string(tool_messages::kExportExtension),
                                     .start = path});
      case FileExistsAnswer::Cancel:
        throw platform::Cancelled();
      default:
        return std::nullopt;
    }
  }

  const std::vector<std::string>& images_;
  const ExportSettings& settings_;
  const platform::LocaleText& locale_;
  const EditTools& tools_;
  const ToolRun& run_;
  ToolNotes notes_;
  std::optional<FileExistsAnswer> standing_;
};

}  // namespace

std::vector<std::string> TextFileNames(const std::vector<std::string>& images) {
  return OutputNames(images, "", tool_messages::kExportExtension);
}

ToolReport ExportExif(const std::vector<std::string>& images, const ExportSettings& settings,
                      const platform::LocaleText& locale, const EditTools& tools, const ToolRun& run) {
  return ExportRun(images, settings, locale, tools, run).Run();
}

}  // namespace ml::imagefiles
