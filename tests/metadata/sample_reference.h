#pragma once

#include <fstream>
#include <nlohmann/json.hpp>

#include "support/temp_dir.h"

namespace ml::test {

/// The reference reading of the real files by their names below the samples; empty where there are none.
inline nlohmann::json SampleReference() {
  const auto samples = SamplesDir();
  if (!samples) return nlohmann::json::object();
  std::ifstream file(*samples + "/expected.json");
  return nlohmann::json::parse(file);
}

}  // namespace ml::test
