#include "cli/sort_option.h"

#include <CLI/CLI.hpp>
#include <map>

#include "cli/loaded_catalogue.h"

namespace ml::cli {

namespace {

using catalogue::SortMethod;

const std::map<std::string, SortMethod> kMethods = {{"numeric", SortMethod::Numeric},
                                                    {"alphabetical", SortMethod::Alphabetical},
                                                    {"timestamp", SortMethod::Timestamp},
                                                    {"filetype", SortMethod::FileType},
                                                    {"custom", SortMethod::Custom}};

}  // namespace

void AddSortOption(CLI::App& command, SortOption& option) {
  command.add_option("--sort", option.method, "numeric, alphabetical, timestamp, filetype or custom")
      ->check(CLI::IsMember(kMethods));
  command.add_flag("--reverse", option.reverse, "In reverse order");
}

void ApplySort(const SortOption& option, LoadedCatalogue& loaded) {
  if (option.method.empty() && !option.reverse) return;
  const auto method = option.method.empty() ? loaded.list.sortMethod : kMethods.at(option.method);
  loaded.list.reverseSort = option.reverse && method != SortMethod::Custom;
  loaded.catalogue.SortBy(method);
}

}  // namespace ml::cli
