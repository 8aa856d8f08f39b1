#include "rawconvert/nef/nef_difference_code.h"

#include <cstddef>
#include <span>

namespace ml::rawconvert {
namespace {

/// The codes of one length, in rising order of their numbers; each as bits of difference and bits left out.
struct Row {
  int codeBits;
  std::initializer_list<std::array<int, 2>> codes;
};

const Row kLossy[] = {{2, {{5, 0}}},  {3, {{4, 0}, {3, 0}, {6, 0}, {2, 0}, {7, 0}}},
                      {4, {{1, 0}}},  {5, {{0, 0}}},
                      {6, {{8, 0}}},  {7, {{9, 0}}},
                      {8, {{11, 0}}}, {9, {{10, 0}}},
                      {10, {{12, 0}}}};
const Row kLossyAfterSplit[] = {{2, {{9, 3}}},           {3, {{10, 5}, {8, 3}, {7, 2}, {6, 1}, {5, 0}}},
                                {4, {{4, 0}}},           {5, {{3, 0}}},
                                {6, {{2, 0}}},           {7, {{1, 0}}},
                                {8, {{0, 0}}},           {9, {{11, 0}}},
                                {10, {{12, 0}, {12, 0}}}};
const Row kLossless[] = {{2, {{5, 0}}},         {3, {{4, 0}, {6, 0}, {3, 0}, {7, 0}}},
                         {4, {{2, 0}, {8, 0}}}, {5, {{1, 0}, {9, 0}, {0, 0}}},
                         {6, {{10, 0}}},        {7, {{11, 0}, {12, 0}}}};

std::span<const Row> RowsOf(NefCode code) {
  switch (code) {
    case NefCode::LossyAfterSplit:
      return kLossyAfterSplit;
    case NefCode::Lossless:
      return kLossless;
    default:
      return kLossy;
  }
}

}  // namespace

/// Codes of a length follow those of the shorter ones, so each fills the places that begin with it.
NefDifferenceCode::NefDifferenceCode(NefCode code) {
  std::size_t place = 0;
  for (const auto& row : RowsOf(code)) {
    for (const auto& [bits, dropped] : row.codes) {
      const Step step{static_cast<std::uint8_t>(row.codeBits), static_cast<std::uint8_t>(bits),
                      static_cast<std::uint8_t>(dropped)};
      for (std::size_t i = 0; i < std::size_t{1} << (kLongest - row.codeBits); ++i) steps_[place++] = step;
    }
  }
}

}  // namespace ml::rawconvert
