#include "imagefiles/edits/thm_edits.h"

namespace ml::imagefiles {

void AdjustThmDateTime(ImageFile& file, std::int64_t seconds, const EditTools& tools) {
  const auto path = tools.companions.Find(file.Path()).thm;
  if (path.empty()) return;
  ImageFile thm(RowOf(Format::Jpeg), path, tools.options);
  AdjustDateTime(thm, seconds, tools);
}

}  // namespace ml::imagefiles
