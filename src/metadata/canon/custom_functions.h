#pragma once

#include <string>

#include "metadata/canon/canon_words.h"

/// The custom functions that are not at their defaults, a line each behind a heading.
namespace ml::metadata {

/// Tag 15; empty for a model whose functions are not known.
std::string CustomFunctionsText(const std::string& model, CanonWords words);
/// Tag 144, of the EOS-1D family. An array of another size than theirs reads as all defaults.
std::string Eos1DCustomFunctionsText(CanonWords words);

}  // namespace ml::metadata
