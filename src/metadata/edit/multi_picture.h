#pragma once

#include "metadata/edit/edited_file.h"

namespace ml::metadata {

/// A JPEG may hold more pictures behind its own, and a segment that tells how far behind that segment they begin. This
/// makes what it tells true again after segments around it have grown or shrunk, and is to be called once all else is
/// done. Does nothing where there is no such segment, or the edit changed more than segments.
void RealignMultiPicture(EditedFile& jpeg);

}  // namespace ml::metadata
