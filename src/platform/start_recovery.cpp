#include "platform/start_recovery.h"

#include "platform/linked_overwrite.h"

namespace ml::platform {

std::vector<std::string> FinishEarlierRuns() {
  auto recovery = FinishInterruptedOverwrites();
  auto sentences = std::move(recovery.failures);
  for (const auto& path : recovery.finished)
    sentences.push_back("A change that was cut off has been finished:\n" + path);
  for (const auto& path : recovery.recovered) {
    sentences.push_back("A change that was cut off is kept beside its file, which has changed since:\n" + path);
  }
  return sentences;
}

}  // namespace ml::platform
