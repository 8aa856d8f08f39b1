#pragma once

#include <string>

namespace CLI {
class App;
}

namespace ml::cli {

class LoadedCatalogue;

/// --sort and --reverse: without them the directory's own order file decides.
struct SortOption {
  std::string method;  ///< a word of the order file; empty: as it is
  bool reverse = false;
};
void AddSortOption(CLI::App& command, SortOption& option);
/// --sort sorts forwards unless --reverse is given; --reverse alone reverses the present method. A custom order
/// knows no reverse.
void ApplySort(const SortOption& option, LoadedCatalogue& loaded);

}  // namespace ml::cli
