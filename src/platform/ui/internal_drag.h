#pragma once

class QMimeData;

namespace ml::platform::ui {

/// Marks what is dragged as coming from a pane of this run of the program, so that no other pane of the window
/// takes it for files dropped from outside.
void MarkInternalDrag(QMimeData& data);
bool IsInternalDrag(const QMimeData& data);

}  // namespace ml::platform::ui
