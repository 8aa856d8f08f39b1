#include "app/startup/affinity.h"

#include <sched.h>

#include <cerrno>

#include "app/startup/messages.h"

namespace ml::app {

namespace {

constexpr int kLeaveUnpinned = 31;
constexpr int kProcessors = 32;
constexpr int kMaskBits = 64;

std::uint64_t Bit(int cpu) { return std::uint64_t{1} << cpu; }

}  // namespace

ProcessorChoice ChooseProcessor(int cpuPreference, std::uint64_t processMask) {
  if (cpuPreference >= kLeaveUnpinned) return {ProcessorStep::Skip};
  if (processMask == 0) return {ProcessorStep::Nothing};
  const bool wished = cpuPreference >= 0 && (processMask & Bit(cpuPreference)) != 0;
  for (int cpu = wished ? cpuPreference : 0; cpu < kProcessors; ++cpu) {
    if (processMask == Bit(cpu)) return {ProcessorStep::AlreadySingle};
    if ((processMask & Bit(cpu)) != 0) return {ProcessorStep::Pin, cpu};
  }
  return {ProcessorStep::Nothing};
}

AffinityCalls SystemAffinity() {
  const auto processMask = [] {
    cpu_set_t set;
    CPU_ZERO(&set);
    std::uint64_t mask = 0;
    if (::sched_getaffinity(0, sizeof set, &set) != 0) return mask;
    for (int cpu = 0; cpu < kMaskBits; ++cpu) {
      if (CPU_ISSET(static_cast<std::size_t>(cpu), &set)) mask |= Bit(cpu);
    }
    return mask;
  };
  const auto pin = [](int cpu) {
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(static_cast<std::size_t>(cpu), &set);
    return ::sched_setaffinity(0, sizeof set, &set) == 0 ? 0 : errno;
  };
  return {processMask, pin};
}

std::optional<platform::MessageBox> ApplyProcessor(int cpuPreference, const AffinityCalls& calls) {
  if (cpuPreference < 0) return std::nullopt;
  const std::uint64_t mask = calls.processMask();
  const auto choice = ChooseProcessor(cpuPreference, mask);
  if (choice.step == ProcessorStep::Skip) return SkippingAffinityBox();
  if (choice.step != ProcessorStep::Pin) return std::nullopt;
  const int error = calls.pin(choice.cpu);
  if (error == 0) return std::nullopt;
  return AffinityFailedBox(choice.cpu, error, static_cast<unsigned long>(mask));
}

}  // namespace ml::app
