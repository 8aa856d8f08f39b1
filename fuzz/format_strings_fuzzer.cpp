#include "metadata/format_strings/format_strings.h"

#include <cstdlib>
#include <string_view>

#include "platform/name_pieces.h"
#include "platform/ordered_replacements.h"

namespace {

using namespace ml;

/// Its texts hold tokens, so that one may lead to many others.
metadata::ExifData MakeRecord() {
  metadata::ExifData data;
  data.path = data.displayPath = "/p/@iso@/IMG_0123@owner@\xC4.jpg";
  data.fileSize = 1'234'567;
  data.dateTime = "2003:05:17 10:11:12";
  data.comment = "@exifComments@@exif@@exifSummary@@owner@@IPTC_city@\xE2\x82";
  data.owner = "@copyright@@customFunctions@@dateTime@", data.copyright = "@focusMode@ @IPTC_keywords@ @";
  data.afMode = data.model = data.exposureMode = "@customFunctions@@customFunctions@";
  data.customFunctions = "Custom Functions:\n@IPTC_keywords@@IPTC_country@";
  for (const int dataset : {25, 25, 90, 101, 120}) data.iptc.push_back({2, dataset, "@IPTC_city@@IPTC_caption@@"});
  return data;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static auto record = MakeRecord();
  const std::string_view format(reinterpret_cast<const char*>(bytes), size);
  const metadata::ExifOptions options;
  const platform::LocaleText locale;
  const auto text = metadata::ExpandFormatString(format, {record, options, locale});
  if (text.size() > size + platform::kMostGrowth) std::abort();
  if (format.find('@') == std::string_view::npos && text != format) std::abort();
  metadata::DescribeFormatString(format);
  platform::ReplaceNamePieces(std::string(format), format, "IMG_0123\xC3\x84\xC4");
  return 0;
}
