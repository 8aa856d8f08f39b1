#pragma once

namespace ml::platform {

/// Sets the niceness of the calling thread, -20..19 (higher yields more). A refusal is ignored: priority is a
/// courtesy, never needed for correct work.
void SetThreadNice(int nice);

}  // namespace ml::platform
