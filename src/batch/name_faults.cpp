#include "batch/name_faults.h"

#include <algorithm>
#include <unordered_map>

#include "batch/messages.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace ml::batch {
namespace {

/// In characters: a rule of the cameras' own programs.
constexpr std::size_t kLongestRawName = 31;
/// In bytes; no file system takes more.
constexpr std::size_t kLongestName = 255;

using NameCounts = std::unordered_map<std::string, int>;

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

/// Nothing that a file can be called, or what would hide it.
bool IsNoName(const std::string& name) {
  const auto stem = platform::SplitPath(name).stem;
  return stem.empty() || stem == "." || stem == ".." || std::ranges::any_of(name, IsControl);
}

NameFault FaultOf(const NewName& row, const NameCounts& exact, const NameCounts& folded) {
  const auto& name = row.newName;
  if (row.conflict) return NameFault::Conflict;
  if (name.find_first_of("\\/:*?\"<>|") != std::string::npos) return NameFault::ForbiddenCharacter;
  if (row.isCanonRaw && platform::CodePointCount(name) > kLongestRawName) return NameFault::RawNameTooLong;
  if (IsNoName(name)) return NameFault::NotAName;
  if (name.size() > kLongestName) return NameFault::TooLong;
  if (exact.at(name) > 1) return NameFault::Duplicate;
  return folded.at(platform::nameFold(name)) > 1 ? NameFault::SameButForCase : NameFault::None;
}

}  // namespace

std::vector<NameFault> FaultsOf(const NewNames& names) {
  NameCounts exact, folded;
  for (const auto& row : names.rows) {
    ++exact[row.newName];
    ++folded[platform::nameFold(row.newName)];
  }
  std::vector<NameFault> faults;
  faults.reserve(names.rows.size());
  for (const auto& row : names.rows) faults.push_back(FaultOf(row, exact, folded));
  return faults;
}

std::string SentenceOf(NameFault fault, const NewName& row) {
  switch (fault) {
    case NameFault::Conflict:
      return ConflictingName(row.newName);
    case NameFault::ForbiddenCharacter:
      return ForbiddenCharacter(row.newName);
    case NameFault::RawNameTooLong:
      return RawNameTooLong(row.oldName, row.newName);
    case NameFault::Duplicate:
      return DuplicateName(row.newName);
    case NameFault::NotAName:
      return NotAName(row.oldName);
    case NameFault::TooLong:
      return NameTooLong(row.oldName);
    case NameFault::SameButForCase:
      return SameButForCase(row.newName);
    case NameFault::None:
      break;
  }
  return {};
}

}  // namespace ml::batch
