#pragma once

#include "rawconvert/development_sdk.h"

namespace ml::rawconvert {

/// The development of CRW files over the raw decoder.
class LibRawDevelopment final : public DevelopmentSdk {
 public:
  std::unique_ptr<DevelopablePicture> Open(const std::string& path) override;
};

}  // namespace ml::rawconvert
