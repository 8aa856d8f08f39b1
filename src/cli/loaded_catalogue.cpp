#include "cli/loaded_catalogue.h"

#include <nlohmann/json.hpp>

#include "catalogue/order_file.h"
#include "cli/given_image.h"
#include "imagefiles/companion_finder.h"
#include "imagefiles/format_table.h"
#include "options/engine_options.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::cli {

LoadedCatalogue::LoadedCatalogue(RunState& state) : catalogue(list, gate_, *this, *this), state_(state), gate_(list) {
  options::TakeSortOrder(state.settings, list);
  catalogue.SetOptions(options::CatalogueOptionsOf(state.settings));
}

LoadedCatalogue::LoadedCatalogue(RunState& state, const std::string& directory) : LoadedCatalogue(state) {
  LoadDirectory(directory);
}

LoadedCatalogue::LoadedCatalogue(RunState& state, const std::vector<std::string>& given) : LoadedCatalogue(state) {
  if (given.size() == 1 && (platform::IsDirectory(given.front()) || imagefiles::FindFormat(given.front()) == nullptr)) {
    LoadDirectory(given.front());
  } else {
    LoadFiles(given);
  }
}

void LoadedCatalogue::LoadDirectory(const std::string& given) {
  directory_ = given;
  catalogue.LoadDirectory(paths_.Add(given), {});
  if (catalogue.Directory().empty()) {
    throw platform::UserError(warnings_.empty() ? given + ": cannot be shown" : warnings_.back());
  }
  if (catalogue.NotTaken().unreadable) state_.Fail(given + ": cannot be read, or not to its end");
}

/// Says why not.
bool LoadedCatalogue::CanBeListed(const std::string& given) const {
  auto reason = WhyNoImage({given, given});
  const bool hidden =
      platform::FileName(given).starts_with('.') && state_.settings.catalogue.showHiddenDirectories == 0;
  if (reason.empty() && hidden) reason = given + ": is hidden; choose --hidden";
  if (!reason.empty()) state_.Fail(reason);
  return reason.empty();
}

void LoadedCatalogue::LoadFiles(const std::vector<std::string>& given) {
  std::vector<std::string> files;
  for (const auto& file : given) {
    if (platform::IsDirectory(file)) throw platform::UserError(file + ": is a directory; give one directory, or files");
    if (CanBeListed(file)) files.push_back(paths_.Add(file));
  }
  catalogue.LoadFileList(files);
  if (const int bound = catalogue.NotTaken().boundJpegs; bound > 0) {
    Complain("left out, as the raw files beside them stand for them: " + std::to_string(bound) + " of the JPEG files");
  }
  directory_ = paths_.Of(platform::normaliseDirectory(list.Directory()));
}

std::string LoadedCatalogue::Entry(const std::string& name) const {
  const auto path =
      name.find('/') == std::string::npos ? platform::JoinPath(list.Directory(), name) : platform::AbsolutePath(name);
  const int index = list.FindPath(path);
  if (index < 0) throw platform::UserError(name + ": is not among the images of " + directory_);
  if (!catalogue::FitsOnALine(path)) throw platform::UserError(name + ": has a line break in its name, not kept");
  return list.files[static_cast<std::size_t>(index)];
}

Json LoadedCatalogue::ToJson() const {
  Json object;
  PutPath(object, "directory", directory_);
  object["sortMethod"] = catalogue::SortMethodWord(list.sortMethod);
  object["reverse"] = list.reverseSort;
  object["count"] = list.Count();
  object["taggedCount"] = list.TaggedCount();
  object["files"] = Json::array();
  imagefiles::CompanionFinder companions(options::ImageFileOptionsOf(state_.settings));
  for (int i = 0; i < list.Count(); ++i) {
    const auto& path = list.files[static_cast<std::size_t>(i)];
    const auto found = companions.Find(path);
    Json file;
    PutPath(file, "path", paths_.Of(path));
    file["tagged"] = list.marks[static_cast<std::size_t>(i)].tagged;
    file["hasSound"] = !found.wav.empty();
    file["hasViewingJpeg"] = !found.jpg.empty();
    object["files"].push_back(std::move(file));
  }
  object["warnings"] = Json::array();
  for (const auto& warning : warnings_) object["warnings"].push_back(JsonText(warning));
  return object;
}

void LoadedCatalogue::Print() const {
  if (state_.json) return PrintJson(ToJson());
  for (int i = 0; i < list.Count(); ++i) {
    const bool tagged = list.marks[static_cast<std::size_t>(i)].tagged;
    PrintLine((tagged ? "* " : "  ") + paths_.Of(list.files[static_cast<std::size_t>(i)]));
  }
  PrintLine(std::to_string(list.Count()) + " images, " + std::to_string(list.TaggedCount()) + " tagged, sorted " +
            catalogue::SortMethodWord(list.sortMethod) + (list.reverseSort ? ", reversed" : ""));
}

void LoadedCatalogue::message(const platform::MessageBox& box) {
  warnings_.push_back(box.text);
  if (box.icon != platform::BoxIcon::Error) return Complain(box.text);
  if (!catalogue.Directory().empty()) state_.Fail(box.text);  // else the load fails, and says so
}

platform::Button LoadedCatalogue::ask(const platform::MessageBox& box) {
  state_.Fail(box.text + " (taken as no)");
  return platform::Button::No;
}

platform::Interaction::CheckedAnswer LoadedCatalogue::askCheck(const platform::MessageBox& box, const std::string&) {
  return {ask(box), false};
}

}  // namespace ml::cli
