#include "metadata/iptc/iptc_datasets.h"

#include <algorithm>
#include <iterator>

namespace ml::metadata {
namespace {

constexpr IptcDatasetRow kRows[] = {
    {5, "objectName"},
    {7, "editStatus"},
    {10, "priority"},
    {15, "category"},
    {20, "supplementalCategories", true},
    {22, "jobID"},
    {25, "keywords", true},
    {30, "releaseDate"},
    {35, "releaseTime"},
    {40, "specialInstructions"},
    {55, "dateCreated"},
    {60, "timeCreated"},
    {65, "originatingProgram"},
    {75, "objectCycle"},
    {80, "byline"},
    {85, "bylineTitle"},
    {90, "city"},
    {92, "sublocation"},
    {95, "state"},
    {100, "countryCode"},
    {101, "country"},
    {103, "origTransRef"},
    {105, "headline"},
    {110, "credit"},
    {115, "source"},
    {116, "copyright"},
    {120, "caption"},
    {122, "captionWriter"},
};

}  // namespace

std::span<const IptcDatasetRow> KnownIptcDatasets() { return kRows; }

const IptcDatasetRow* FindIptcDataset(int dataset) {
  const auto* row = std::ranges::find(kRows, dataset, &IptcDatasetRow::dataset);
  return row == std::end(kRows) ? nullptr : row;
}

}  // namespace ml::metadata
