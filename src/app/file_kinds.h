#pragma once

#include <string>
#include <unordered_map>

namespace ml::app {

/// What the rules of the commands ask of a file, or whether any of several files is such.
struct FileKinds {
  bool jpeg = false;
  bool tiff = false;
  bool raw = false;  ///< what conversion takes: ".crw", ".thm", ".nef" and the raw files among the ".tif"
  bool crw = false;
  bool avi = false;
  bool holdsIptc = false;
  friend bool operator==(const FileKinds&, const FileKinds&) = default;
};

/// Tells kinds by the names. The two questions that only the disk answers are asked once for each file: whether a
/// ".tif" is a raw file, and whether the companion is there that holds IPTC data for a ".crw" or ".avi".
class FileKindMemory {
 public:
  FileKinds Of(const std::string& path);
  /// Adds to `sum` what Of() would tell of `path` but for holdsIptc, which rules ask of single files only. A ".tif"
  /// is opened only as long as `sum` has no raw file.
  void Add(const std::string& path, FileKinds& sum);
  /// Files came, went or changed.
  void Forget();

 private:
  bool IsRawTiff(const std::string& path);

  std::unordered_map<std::string, bool> rawTiffs_;
  std::unordered_map<std::string, bool> iptc_;
};

}  // namespace ml::app
