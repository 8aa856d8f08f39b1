#pragma once

#include <chrono>
#include <string>

namespace ml::platform {

/// Path of the colour profile that the system's colour service keeps for the screen; empty if there is no service, or
/// it has none. Asked once a run: the first call waits for the answer, at most 300 ms. Any thread.
const std::string& SystemMonitorProfile();

/// The question itself, put to the message bus at `address`. Waits `limit` at most.
std::string AskForMonitorProfile(const std::string& address, std::chrono::milliseconds limit);

}  // namespace ml::platform
