#pragma once

namespace ml::imaging {

/// While it lives, OpenMP loops which this thread starts inside libraries run on this thread alone: each of our
/// threads works on a picture of its own. The bound does not pass to other threads.
class OpenMpBound {
 public:
  OpenMpBound();
  ~OpenMpBound();
  OpenMpBound(const OpenMpBound&) = delete;
  OpenMpBound& operator=(const OpenMpBound&) = delete;

 private:
  int before_;
};

}  // namespace ml::imaging
