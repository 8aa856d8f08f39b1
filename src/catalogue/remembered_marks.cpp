#include "catalogue/remembered_marks.h"

namespace ml::catalogue {

RememberedMarks::RememberedMarks(const ImageList& list) {
  for (std::size_t i = 0; i < list.files.size(); ++i) marks_.emplace(list.files[i], list.marks[i]);
  if (list.ValidIndex(list.focusIndex)) focusPath_ = list.files[static_cast<std::size_t>(list.focusIndex)];
}

void RememberedMarks::RestoreTags(ImageList& list) const {
  for (std::size_t i = 0; i < list.files.size(); ++i) {
    const auto known = marks_.find(list.files[i]);
    if (known != marks_.end()) list.marks[i].tagged = known->second.tagged;
  }
}

void RememberedMarks::RestoreSelection(ImageList& list) const {
  for (std::size_t i = 0; i < list.files.size(); ++i) {
    const auto known = marks_.find(list.files[i]);
    list.marks[i].selected = known != marks_.end() && known->second.selected;
  }
  const int focus = list.IndexOfPath(focusPath_);
  if (focus >= 0) list.focusIndex = focus;
}

}  // namespace ml::catalogue
