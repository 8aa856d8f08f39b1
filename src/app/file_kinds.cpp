#include "app/file_kinds.h"

#include "imagefiles/eos1d_test.h"
#include "imagefiles/format_table.h"
#include "imagefiles/raw_files.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

template <class Test>
bool AskOnce(std::unordered_map<std::string, bool>& known, const std::string& path, Test test) {
  const auto found = known.find(path);
  return found != known.end() ? found->second : known.emplace(path, test(path)).first->second;
}

}  // namespace

bool FileKindMemory::IsRawTiff(const std::string& path) { return AskOnce(rawTiffs_, path, imagefiles::catalogueEos1D); }

FileKinds FileKindMemory::Of(const std::string& path) {
  FileKinds kinds;
  Add(path, kinds);
  kinds.holdsIptc = AskOnce(iptc_, path, imagefiles::CanHoldIptc);
  return kinds;
}

void FileKindMemory::Add(const std::string& path, FileKinds& sum) {
  using imagefiles::Format;
  const auto ends = [&](std::string_view ending) { return platform::EndsWithNoCase(path, ending); };
  const auto* row = imagefiles::FindFormat(path);
  if (row == nullptr) {
    sum.raw = sum.raw || ends(".thm");
    return;
  }
  switch (row->format) {
    case Format::Jpeg:
      sum.jpeg = true;
      break;
    case Format::Crw:
      sum.crw = sum.raw = true;
      break;
    case Format::Nef:
      sum.raw = true;
      break;
    case Format::Tiff:
      sum.tiff = true;
      if (!sum.raw && ends(".tif")) sum.raw = IsRawTiff(path);
      break;
    case Format::Avi:
      sum.avi = true;
      break;
    default:
      break;
  }
}

void FileKindMemory::Forget() {
  rawTiffs_.clear();
  iptc_.clear();
}

}  // namespace ml::app
