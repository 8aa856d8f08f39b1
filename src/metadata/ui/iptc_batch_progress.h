#pragma once

#include "metadata/iptc/iptc_apply.h"

class QWidget;

namespace ml::metadata::ui {

/// ApplyIptcToMany() on a thread of its own, under a window that tells how far it is and cancels. Returns when it is
/// done; throws what it throws.
IptcBatchReport RunIptcBatch(const IptcBatch& batch, const IptcApplyHost& host, QWidget* parent);

}  // namespace ml::metadata::ui
