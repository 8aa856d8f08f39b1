#include "imagefiles/edits/adjust_dates.h"

#include "platform/file_status.h"

namespace ml::imagefiles {

void AdjustDates(const std::string& path, std::int64_t seconds, bool shiftFileTime, const EditTools& tools) {
  constexpr std::int64_t kSecond = 1'000'000'000;
  auto& fileSystem = *tools.edit.fileSystem;
  const auto before = platform::ReadFileStatus(path, fileSystem);
  {
    const auto file = CreateImageFile(path, tools.options);
    if (!file || !before) return;
    AdjustDateTime(*file, seconds, tools);
  }
  if (!shiftFileTime) return;
  if (tools.edit.insteadOfWriting) return tools.edit.insteadOfWriting(path);
  if (tools.edit.recorder != nullptr) tools.edit.recorder->WillChangeStatus(path);
  platform::SetModificationTime(path, before->modified + seconds * kSecond, fileSystem);
}

}  // namespace ml::imagefiles
