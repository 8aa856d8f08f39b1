#include "platform/thread_priority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace ml::platform {

void SetThreadNice(int nice) {
  // On Linux niceness belongs to the thread, and 0 would mean the calling process's first one.
  static_cast<void>(::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), nice));
}

}  // namespace ml::platform
