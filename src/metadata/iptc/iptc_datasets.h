#pragma once

#include <span>
#include <string_view>

namespace ml::metadata {

inline constexpr int kApplicationRecord = 2;  ///< the one record that is edited

/// Datasets of the application record that code asks for.
namespace iptc_dataset {
inline constexpr int kVersion = 0, kCategory = 15, kSupplementalCategories = 20, kKeywords = 25, kReleaseDate = 30,
                     kSpecialInstructions = 40, kDateCreated = 55, kTimeCreated = 60, kByLine = 80, kCopyright = 116,
                     kCaption = 120;
}

struct IptcDatasetRow {
  int dataset = 0;
  std::string_view name;  ///< as in the tokens of format strings
  bool repeated = false;  ///< holds a list
};

/// The datasets of the application record that can be edited, by their numbers.
std::span<const IptcDatasetRow> KnownIptcDatasets();
/// Null for all others.
const IptcDatasetRow* FindIptcDataset(int dataset);

}  // namespace ml::metadata
