#include "rawconvert/batch/find_converted.h"

#include <span>
#include <string_view>

#include "platform/dir_index.h"
#include "platform/paths.h"

namespace ml::rawconvert {
namespace {

constexpr std::string_view kTiff[] = {".tif", "c.tif", "l.tif"};
constexpr std::string_view kJpeg[] = {".jpg", "c.jpg", "l.jpg"};
constexpr std::string_view kJp2[] = {".jp2", ".jpf", "c.jp2", "c.jpf", "l.jp2", "l.jpf"};
constexpr std::string_view kPng[] = {".png", "c.png", "l.png"};

std::span<const std::string_view> EndingsOf(OutputFormat format) {
  switch (FactsOf(format).written) {
    case imaging::WrittenFormat::Jpeg:
      return kJpeg;
    case imaging::WrittenFormat::Jpeg2000:
      return kJp2;
    case imaging::WrittenFormat::Png:
      return kPng;
    case imaging::WrittenFormat::Tiff:
      break;
  }
  return kTiff;
}

}  // namespace

std::string FindConverted(const std::string& source, const std::string& directory, OutputFormat format) {
  const auto name = platform::FileName(source);
  const std::string stem(name.substr(0, name.rfind('.')));
  platform::DirIndex index(directory);
  for (const auto ending : EndingsOf(format)) {
    const auto found = index.Find(stem + std::string(ending));
    if (!found) continue;
    auto path = platform::JoinPath(directory, *found);
    if (!platform::SameFile(path, source)) return path;
  }
  return {};
}

}  // namespace ml::rawconvert
