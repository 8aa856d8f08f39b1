#include "rawconvert/picture_collection.h"

#include "platform/paths.h"
#include "platform/text.h"

namespace ml::rawconvert {

bool IsDevelopableName(const std::string& path) {
  return platform::CodePointCount(platform::FileName(path)) <= kMaxRawName;
}

PictureCollection::PictureCollection(const std::string& path, DevelopmentSdk& sdk) : path_(path), sdk_(sdk) {
  if (IsDevelopableName(path_)) picture_ = sdk_.Open(path_);
}

void PictureCollection::SelectPicture(int index) {
  if (index == 0 && picture_ == nullptr && IsDevelopableName(path_)) picture_ = sdk_.Open(path_);
}

imaging::PixelBuffer PictureCollection::Develop(RawDevelopParams& params, DevelopRequest request,
                                                const DevelopWatch& watch) {
  if (params.Linear()) request.output = OutputCode::Bits16;
  return picture_->Develop(params, request, watch);
}

}  // namespace ml::rawconvert
