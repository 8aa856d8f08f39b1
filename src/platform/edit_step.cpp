#include "platform/edit_step.h"

#include <cerrno>
#include <utility>

#include "platform/messages.h"
#include "platform/record_line.h"

namespace ml::platform {

namespace {

constexpr char kHead[] = "batch 1";
constexpr char kStep[] = "step";
constexpr char kAfter[] = "after";
constexpr char kUndoing[] = "undoing";
constexpr char kUndone[] = "undone";

using Fields = std::vector<std::string>;

void PutStamp(Fields& fields, const FileStamp& stamp) {
  fields.insert(fields.end(), {std::to_string(stamp.size), std::to_string(stamp.modified), std::to_string(stamp.mode)});
}

/// Takes the fields of one line one after the other; once one is missing or wrong, all that follow are empty.
class FieldReader {
 public:
  explicit FieldReader(const Fields& fields) : fields_(fields) {}
  std::string Text() {
    valid_ = valid_ && next_ < fields_.size();
    return valid_ ? fields_[next_++] : std::string();
  }
  template <class Value>
  Value Number() {
    Value value{};
    valid_ = ReadNumber(Text(), value) && valid_;
    return value;
  }
  FileStamp Stamp() {
    FileStamp stamp{.size = Number<std::uint64_t>(), .modified = Number<std::int64_t>()};
    stamp.mode = static_cast<mode_t>(Number<std::uint64_t>());
    return stamp;
  }
  bool HasMore() const { return next_ < fields_.size(); }
  bool Valid() const { return valid_; }

 private:
  const Fields& fields_;
  std::size_t next_ = 0;
  bool valid_ = true;
};

KeptStretch ReadKept(FieldReader& in) {
  KeptStretch kept;
  for (auto* number : {&kept.oldOffset, &kept.newOffset, &kept.size}) *number = in.Number<std::uint64_t>();
  return kept;
}

/// Whether the kept stretches are ascending, apart and inside both contents.
bool IsInOrder(const EditStep& step) {
  std::uint64_t oldEnd = 0, newEnd = 0;
  for (const auto& kept : step.kept) {
    if (kept.oldOffset < oldEnd || kept.oldOffset > step.oldSize || kept.size > step.oldSize - kept.oldOffset ||
        kept.newOffset < newEnd || kept.newOffset > step.newSize || kept.size > step.newSize - kept.newOffset) {
      return false;
    }
    oldEnd = kept.oldOffset + kept.size;
    newEnd = kept.newOffset + kept.size;
  }
  return true;
}

bool AddStep(FieldReader& in, EditLog& log) {
  EditStep step;
  const auto kind = in.Number<std::uint64_t>();
  step.kind = static_cast<EditKind>(kind);
  for (auto* text : {&step.path, &step.other, &step.oldBytes, &step.newBytes}) *text = in.Text();
  for (auto* number : {&step.offset, &step.oldSize, &step.newSize, &step.oldHash, &step.newHash}) {
    *number = in.Number<std::uint64_t>();
  }
  step.before = in.Stamp();
  if (in.HasMore()) step.inode = in.Number<std::uint64_t>();
  step.storedHash = in.HasMore() ? in.Number<std::uint64_t>() : step.oldHash;
  while (in.HasMore()) step.kept.push_back(ReadKept(in));
  if (!in.Valid() || !IsInOrder(step) || kind > static_cast<std::uint64_t>(EditKind::Lost)) return false;
  log.steps.push_back(std::move(step));
  return true;
}

bool AddAfter(FieldReader& in, EditLog& log) {
  const auto index = in.Number<std::uint64_t>();
  const auto stamp = in.Stamp();
  if (!in.Valid() || index >= log.steps.size()) return false;
  log.steps[index].after = stamp;
  return true;
}

bool AddUndone(FieldReader& in, EditLog& log) {
  const auto index = in.Number<std::uint64_t>();
  if (!in.Valid() || index >= log.steps.size()) return false;
  log.steps[index].undone = true;
  return true;
}

bool AddLine(const std::string& kind, FieldReader& in, EditLog& log) {
  if (kind == kStep) return AddStep(in, log);
  if (kind == kAfter) return AddAfter(in, log);
  if (kind == kUndoing) return log.undoing = true;
  return kind == kUndone && AddUndone(in, log);
}

}  // namespace

std::optional<FileStamp> StampOfPath(FileSystem& fileSystem, const std::string& path, Links links) {
  struct stat status {};
  if (fileSystem.Stat(path, links, status) == 0) return StampOf(status);
  if (errno != ENOENT && errno != ENOTDIR) ThrowFileError(messages::kUnableToRead, path, errno);
  return std::nullopt;
}

std::uint64_t EditStep::StoredSize() const noexcept {
  auto size = oldSize;
  for (const auto& stretch : kept) size -= stretch.size;
  return size;
}

std::string HeadLine(const std::string& what, std::int64_t when) {
  return MakeRecordLine({kHead, what, std::to_string(when)});
}

std::string StepLine(const EditStep& step) {
  Fields fields{kStep,
                std::to_string(static_cast<int>(step.kind)),
                step.path,
                step.other,
                step.oldBytes,
                step.newBytes,
                std::to_string(step.offset)};
  for (const auto number : {step.oldSize, step.newSize, step.oldHash, step.newHash}) {
    fields.push_back(std::to_string(number));
  }
  PutStamp(fields, step.before);
  if (step.inode != 0 || !step.kept.empty()) fields.push_back(std::to_string(step.inode));
  if (!step.kept.empty()) fields.push_back(std::to_string(step.storedHash));
  for (const auto& kept : step.kept) {
    for (const auto number : {kept.oldOffset, kept.newOffset, kept.size}) fields.push_back(std::to_string(number));
  }
  return MakeRecordLine(fields);
}

std::string AfterLine(std::size_t index, const FileStamp& stamp) {
  Fields fields{kAfter, std::to_string(index)};
  PutStamp(fields, stamp);
  return MakeRecordLine(fields);
}

std::string UndoingLine() { return MakeRecordLine({kUndoing}); }
std::string UndoneLine(std::size_t index) { return MakeRecordLine({kUndone, std::to_string(index)}); }

std::optional<EditLog> ReadEditLog(std::string_view text) {
  std::optional<EditLog> log;
  for (const auto& fields : ReadRecordLines(text)) {
    FieldReader in(fields);
    const auto kind = in.Text();
    if (!log) {
      if (kind != kHead) return std::nullopt;
      log.emplace();
      log->what = in.Text();
      log->when = in.Number<std::int64_t>();
    } else if (!AddLine(kind, in, *log)) {
      break;
    }
    log->size += MakeRecordLine(fields).size();  // as it was read: there is one way to write a line
  }
  return log;
}

}  // namespace ml::platform
