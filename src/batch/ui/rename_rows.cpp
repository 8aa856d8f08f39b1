#include "batch/ui/rename_rows.h"

#include <string_view>

#include "batch/name_faults.h"
#include "batch/ui/messages.h"

namespace ml::batch::ui {
namespace {

std::string_view RemarkOn(NameFault fault, const NewName& row) {
  switch (fault) {
    case NameFault::Conflict:
      return "Exists already";
    case NameFault::ForbiddenCharacter:
      return kWidestRemark;
    case NameFault::RawNameTooLong:
    case NameFault::TooLong:
      return "Too long";
    case NameFault::Duplicate:
      return "Given twice";
    case NameFault::NotAName:
      return "Not a file name";
    case NameFault::SameButForCase:
      return "Differs only in case";
    case NameFault::None:
      break;
  }
  return row.oldName == row.newName ? "Stays" : "";
}

}  // namespace

std::vector<RenameRow> RowsOf(const NewNames& names) {
  const auto faults = FaultsOf(names);
  std::vector<RenameRow> rows;
  rows.reserve(names.rows.size());
  for (std::size_t i = 0; i < faults.size(); ++i) {
    const auto& row = names.rows[i];
    rows.push_back({.oldName = row.oldName,
                    .newName = row.newName,
                    .remark = std::string(RemarkOn(faults[i], row)),
                    .problem = SentenceOf(faults[i], row)});
  }
  return rows;
}

}  // namespace ml::batch::ui
