#include "imaging/decoded_picture.h"

#include "imaging/messages.h"
#include "platform/errors.h"

namespace ml::imaging {

void Refuse(const char* reason) { throw platform::LibraryError(reason, ""); }

void CheckPixelCount(long long width, long long height, long long limit) {
  if (width <= 0 || height <= 0) Refuse(messages::kNoPixels);
  if (width > limit || height > limit / width) Refuse(messages::kPictureTooLarge);
}

}  // namespace ml::imaging
