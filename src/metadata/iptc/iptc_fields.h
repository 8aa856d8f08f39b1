#pragma once

#include <array>
#include <span>
#include <string_view>

/// The pages on which IPTC data are edited, as plain rows.
namespace ml::metadata {

enum class IptcPage { Caption, Keywords, Category, Credits, Origin };
inline constexpr std::array<std::string_view, 5> kIptcPageTitles = {"Caption", "Keywords", "Category", "Credits",
                                                                    "Origin"};

enum class IptcFieldKind {
  Line,
  Text,    ///< several lines
  Choice,  ///< a line with usual values to choose from
  List,    ///< any number of values
  Date,    ///< followed by the row of its time
  Time,
};

/// A value that is usual in a field, and what it means.
struct IptcChoice {
  std::string_view value, meaning;
};

struct IptcField {
  int dataset = 0;
  IptcPage page = IptcPage::Caption;
  IptcFieldKind kind = IptcFieldKind::Line;
  std::string_view label;  ///< with "&" before the mnemonic; no two of a page have the same
  std::string_view explanation;
  std::span<const IptcChoice> choices = {};
};

/// Of all datasets that can be edited, in the order of the pages and, on each, from top to bottom.
std::span<const IptcField> IptcFields();

}  // namespace ml::metadata
