#include "metadata/canon/custom_functions.h"

#include <span>

#include "metadata/canon/canon_model.h"
#include "metadata/canon/custom_functions_10d.h"
#include "metadata/canon/custom_functions_1d.h"
#include "metadata/canon/custom_functions_d30.h"
#include "platform/paths.h"

namespace ml::metadata {
namespace {

constexpr std::string_view kHeading = "Custom Functions:", kDefaults = "\nDefault settings";
constexpr std::size_t kEos1DCount = 22;

/// The number of the function stands in the high byte.
std::uint16_t InOrder(std::uint16_t word, std::size_t index) {
  return word >> 8 == static_cast<int>(index) - 1 ? word : SwapBytes(word);
}

template <class WordAt>
std::string LinesThatApply(std::span<const CustomFunctionLine> lines, std::size_t count, WordAt&& wordAt) {
  std::string text(kHeading);
  for (const auto& line : lines) {
    if (line.word >= count || (wordAt(line.word) & line.mask) != line.value) continue;
    text += '\n';
    text += line.text;
  }
  return text.size() == kHeading.size() ? text += kDefaults : text;
}

std::span<const CustomFunctionLine> LinesOf(const std::string& model) {
  if (platform::AsciiLower(model) == "canon eos 10d") return k10DLines;
  if (ModelHolds(model, "eos d30") || ModelHolds(model, "eos d60")) return kD30Lines;
  return {};
}

}  // namespace

std::string CustomFunctionsText(const std::string& model, CanonWords words) {
  const auto lines = LinesOf(model);
  if (lines.empty()) return {};
  return LinesThatApply(lines, words.Count(), [&](std::size_t index) { return words[index]; });
}

std::string Eos1DCustomFunctionsText(CanonWords words) {
  const auto known = words.Count() == kEos1DCount ? kEos1DCount : 0;
  return LinesThatApply(k1DLines, known, [&](std::size_t index) { return InOrder(words[index], index); });
}

}  // namespace ml::metadata
