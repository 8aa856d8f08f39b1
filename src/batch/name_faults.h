#pragma once

#include <string>
#include <vector>

#include "batch/new_names.h"

namespace ml::batch {

/// What may be wrong with a new name, in the order in which the rules are asked.
enum class NameFault {
  None,
  Conflict,
  ForbiddenCharacter,
  RawNameTooLong,
  NotAName,
  TooLong,
  Duplicate,
  SameButForCase,  ///< only one of them would arrive where case is ignored, as on a camera's card
};

/// The first fault of each row, as far as it can be told without a look at the disk.
std::vector<NameFault> FaultsOf(const NewNames& names);

/// The sentence about a row with `fault`; empty for None.
std::string SentenceOf(NameFault fault, const NewName& row);

}  // namespace ml::batch
