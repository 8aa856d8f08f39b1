#include "imagefiles/tools/output_names.h"

#include <map>
#include <set>

#include "platform/paths.h"

namespace ml::imagefiles {
namespace {

std::string PlaceOf(const std::string& image, const std::string& directory) {
  return directory.empty() ? std::string(platform::DirectoryOf(image)) : directory;
}

std::string ShortName(const std::string& image, const std::string& directory, std::string_view extension) {
  const auto stem = std::string(platform::SplitPath(image).stem);
  return platform::JoinPath(PlaceOf(image, directory), stem + std::string(extension));
}

}  // namespace

std::vector<std::string> OutputNames(const std::vector<std::string>& images, const std::string& directory,
                                     std::string_view extension) {
  std::map<std::string, std::set<std::string>> sharing;
  for (const auto& image : images) {
    sharing[platform::nameFold(ShortName(image, directory, extension))].insert(image);
  }
  std::vector<std::string> names;
  for (const auto& image : images) {
    auto name = ShortName(image, directory, extension);
    if (sharing[platform::nameFold(name)].size() > 1) {
      name = platform::JoinPath(PlaceOf(image, directory),
                                std::string(platform::FileName(image)) + std::string(extension));
    }
    names.push_back(std::move(name));
  }
  return names;
}

}  // namespace ml::imagefiles
