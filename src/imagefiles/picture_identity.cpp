#include "imagefiles/picture_identity.h"

#include <string_view>

#include "imagefiles/format_table.h"
#include "platform/paths.h"

namespace ml::imagefiles {
namespace {

/// Empty for formats that show nothing but their own file.
std::array<std::string_view, 2> CompanionExtensions(const std::string& path) {
  const auto* row = FindFormat(path);
  if (row == nullptr) return {};
  if (row->hasThm) return {".thm", ".THM"};
  // Whether it is a raw file is not worth opening it: an image that lies beside only makes its picture anew.
  if (row->format == Format::Tiff) return {".jpg", ".JPG"};
  return {};
}

}  // namespace

std::optional<PictureIdentity> PictureIdentityOf(const std::string& path) {
  const auto file = platform::IdentityOf(path);
  if (!file) return std::nullopt;
  PictureIdentity identity{.file = *file};
  const auto extensions = CompanionExtensions(path);
  for (std::size_t i = 0; i < extensions.size(); ++i) {
    if (extensions[i].empty()) continue;
    identity.companion[i] = platform::IdentityOf(platform::WithExtension(path, extensions[i]));
  }
  return identity;
}

}  // namespace ml::imagefiles
