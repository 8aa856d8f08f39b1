#include "catalogue/order_file.h"

#include <algorithm>
#include <array>
#include <utility>

#include "catalogue/name_matcher.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/xml_subset.h"

namespace ml::catalogue {

namespace {

constexpr std::array<std::pair<SortMethod, std::string_view>, 5> kMethodWords = {{
    {SortMethod::Numeric, "numeric"},
    {SortMethod::Alphabetical, "alphabetical"},
    {SortMethod::Timestamp, "timestamp"},
    {SortMethod::FileType, "filetype"},
    {SortMethod::Custom, "custom"},
}};

void ReadFilesAttributes(std::string& tag, DirectoryOrder& order) {
  std::string attribute, value;
  while (platform::ParseAttribute(tag, attribute, value)) {
    if (attribute == "order") {
      const auto row = std::ranges::find(kMethodWords, value, [](const auto& r) { return r.second; });
      if (row != kMethodWords.end()) order.sortMethod = row->first;
    } else if (attribute == "reverse") {
      order.reverse = platform::LeadingInteger(value) > 0;
    }
  }
  if (order.sortMethod == SortMethod::Custom) order.reverse = false;
}

void ReadFileNames(std::string& tag, std::vector<std::string>& names) {
  std::string attribute, value;
  while (platform::ParseAttribute(tag, attribute, value)) {
    if (attribute == "name") names.push_back(value);
  }
}

std::string Quoted(std::string_view text) { return platform::ReplaceAll(text, "\"", "&quot;"); }

/// Arranges paths by the bare names in `names`.
void ArrangeByNames(std::vector<std::string>& paths, const std::vector<std::string>& names) {
  std::vector<std::string_view> fileNames;
  fileNames.reserve(paths.size());
  for (const auto& path : paths) fileNames.push_back(platform::FileName(path));
  paths = Permuted(paths, MatchedOrder(std::move(fileNames), names));
}

}  // namespace

std::string SortMethodWord(SortMethod method) {
  const auto row = std::ranges::find(kMethodWords, method, [](const auto& r) { return r.first; });
  return std::string(row == kMethodWords.end() ? kMethodWords.back().second : row->second);
}

bool FitsOnALine(std::string_view name) { return name.find_first_of("\r\n") == std::string_view::npos; }

void ParseOrderText(std::string_view text, DirectoryOrder& order) {
  platform::XmlFile file(text);
  std::string tag, name;
  bool inRoot = false;
  bool inFiles = false;
  while (platform::ReadTagFromFile(file, tag)) {
    if (!platform::ParseTagName(tag, name)) continue;
    if (!inRoot) {
      inRoot = name == "marrowlantern";
      inFiles = false;
    } else if (name == "/marrowlantern") {
      inRoot = inFiles = false;
    } else if (!inFiles && name == "files") {
      inFiles = true;
      order.names.clear();
      ReadFilesAttributes(tag, order);
    } else if (inFiles && name == "file") {
      ReadFileNames(tag, order.names);
    } else if (inFiles && name == "/files") {
      inFiles = false;
    }
  }
}

std::string BuildOrderText(std::string_view directory, const DirectoryOrder& order) {
  const bool reverse = order.reverse && order.sortMethod != SortMethod::Custom;
  std::string text = "<?xml version=\"1.0\" ?>\r\n<marrowlantern version=\"2.1\">\r\n";
  text.append("\t<files directory=\"").append(Quoted(directory));
  text.append("\" order=\"").append(SortMethodWord(order.sortMethod));
  text.append("\" reverse=\"").append(reverse ? "1" : "0").append("\">\r\n");
  for (const auto& name : order.names) {
    if (FitsOnALine(name)) text.append("\t\t<file name=\"").append(Quoted(name)).append("\"/>\r\n");
  }
  return text.append("\t</files>\r\n</marrowlantern>\r\n");
}

ReadState LoadOrderFile(const std::string& path, std::vector<std::string>& list, ImageList& catalogue) {
  DirectoryOrder order{catalogue.sortMethod, catalogue.reverseSort, {}};
  if (order.sortMethod == SortMethod::Custom) order.sortMethod = SortMethod::Alphabetical;
  const auto file = ReadListFile(path);
  if (file.state == ReadState::Read) ParseOrderText(file.text, order);
  if (order.sortMethod == SortMethod::Custom && !order.names.empty()) ArrangeByNames(list, order.names);

  const auto directory =
      list.empty() && !catalogue.Empty() ? catalogue.Directory() : std::string(platform::DirectoryOf(path));
  catalogue.sortMethod = order.sortMethod;
  catalogue.reverseSort = order.reverse;
  catalogue.customOrder.clear();
  for (const auto& name : order.names) catalogue.customOrder.push_back(directory + name);
  return file.state;
}

}  // namespace ml::catalogue
