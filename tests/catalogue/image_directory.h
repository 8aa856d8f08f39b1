#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/paths.h"
#include "support/temp_dir.h"

namespace ml::test {

using Names = std::vector<std::string>;

/// A directory of empty image files.
class ImageDirectory : public TempDir {
 public:
  ImageDirectory() = default;
  explicit ImageDirectory(const Names& names) { Add(names); }

  void Add(const Names& names) const {
    for (const auto& name : names) Write(name, "");
  }
  void Remove(std::string_view name) const { std::filesystem::remove(*this / name); }
  Names Paths(const Names& names) const {
    Names paths;
    for (const auto& name : names) paths.push_back(*this / name);
    return paths;
  }
  /// A TIFF of 1 MiB whose first directory says `rows` rows and nothing else; 192 makes it an EOS-1D raw file.
  std::string WriteTiff(std::string_view name, char rows) const {
    std::string tiff("II\x2A\0\x08\0\0\0\x01\0\x01\x01\x03\0\x01\0\0\0", 18);
    tiff += rows;
    tiff.resize(1U << 20U, '\0');
    return Write(name, tiff);
  }
  std::string WriteEos1D(std::string_view name) const { return WriteTiff(name, static_cast<char>(192)); }
};

inline Names FileNames(const std::vector<std::string>& paths) {
  Names names;
  for (const auto& path : paths) names.emplace_back(platform::FileName(path));
  return names;
}

}  // namespace ml::test
