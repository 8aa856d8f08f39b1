#pragma once

#include <future>
#include <mutex>

#include "rawconvert/development_sdk.h"

namespace ml::rawconvert {

/// The development of CRW files over the raw decoder.
class LibRawDevelopment final : public DevelopmentSdk {
 public:
  std::unique_ptr<DevelopablePicture> Open(const std::string& path) override;
  void Expect(const std::string& path, const std::stop_token& stop) override;

 private:
  /// A file that is made ready, or was.
  struct Expected {
    std::string path;
    std::future<std::unique_ptr<DevelopablePicture>> picture;
  };

  std::mutex mutex_;  ///< of all below
  Expected ready_;
  std::string next_;
  std::stop_token nextStop_;
};

}  // namespace ml::rawconvert
