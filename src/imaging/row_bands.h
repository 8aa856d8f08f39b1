#pragma once

#include <functional>
#include <stop_token>

namespace ml::imaging {

/// Calls `work(first, end)` for bands that together are the rows 0 to `rows`, each once, on all processors, the
/// caller's thread among them; returns when all are done. No band has fewer than `minimum` rows but the last. What
/// `work` throws first comes out of this call. Throws Cancelled after a stop request, at the latest when the bands in
/// work are done.
void ForRowBands(int rows, const std::function<void(int first, int end)>& work, const std::stop_token& stop = {},
                 int minimum = 16);

}  // namespace ml::imaging
