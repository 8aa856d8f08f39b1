#include "cli/given_image.h"

#include <sys/stat.h>

#include "imagefiles/format_table.h"
#include "platform/errors.h"

namespace ml::cli {

std::string WhyNoImage(const GivenImage& image) {
  struct stat status {};
  if (::stat(image.path.c_str(), &status) != 0) return image.given + ": does not exist";
  if (!S_ISREG(status.st_mode)) return image.given + ": is no regular file";
  if (imagefiles::FindFormat(image.path) == nullptr) return image.given + ": is no image by its extension";
  return {};
}

void RequireImage(const GivenImage& image) {
  if (const auto reason = WhyNoImage(image); !reason.empty()) throw platform::UserError(reason);
}

}  // namespace ml::cli
