#include "catalogue/viewing_jpegs.h"

#include "imagefiles/eos1d_test.h"
#include "platform/paths.h"

namespace ml::catalogue {

bool ViewingJpegs::IsRaw(const std::string& path) {
  const auto [known, isNew] = isRaw_.try_emplace(path, false);
  if (isNew) known->second = imagefiles::catalogueEos1D(path);
  return known->second;
}

std::string ViewingJpegs::RawOf(const std::string& path) {
  const auto parts = platform::SplitPath(path);
  if (!platform::EqualsAsciiFolded(parts.extension, ".jpg")) return {};
  auto& index = indexes_.Of(std::string(parts.directory));
  const auto rawName = index.FindListed(std::string(parts.stem) + ".tif");
  if (!rawName) return {};
  auto raw = std::string(parts.directory) + *rawName;
  if (!IsRaw(raw)) return {};
  const auto itsJpeg = index.FindListed(platform::WithExtension(*rawName, ".jpg"));
  return itsJpeg == platform::FileName(path) ? raw : std::string();
}

}  // namespace ml::catalogue
