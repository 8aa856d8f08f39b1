#include "platform/start_recovery.h"

#include <utility>

#include "platform/linked_overwrite.h"
#include "platform/messages.h"

namespace ml::platform {

std::vector<std::string> FinishEarlierRuns() {
  auto recovery = FinishInterruptedOverwrites();
  auto sentences = std::move(recovery.failures);
  for (const auto& path : recovery.finished) sentences.push_back(messages::kOverwriteFinished + path);
  for (const auto& path : recovery.recovered) sentences.push_back(messages::kOverwriteKeptBeside + path);
  return sentences;
}

}  // namespace ml::platform
