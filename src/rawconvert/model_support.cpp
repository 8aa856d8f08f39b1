#include "rawconvert/model_support.h"

#include "imagefiles/raw_files.h"
#include "platform/errors.h"
#include "rawconvert/messages.h"

namespace ml::rawconvert {

void RequireConvertible(const metadata::ExifData& exif) {
  if (!imagefiles::CanConvertRaw(exif)) throw platform::UserError(messages::NotConvertible(exif.model));
}

}  // namespace ml::rawconvert
