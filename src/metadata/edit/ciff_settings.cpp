#include "metadata/edit/ciff_settings.h"

#include <set>
#include <utility>

#include "metadata/byte_view.h"
#include "metadata/ciff.h"

namespace ml::metadata {
namespace {

constexpr int kMaxDepth = 8;

/// Words of a record, read and written in place.
struct Words {
  std::span<std::byte> bytes;
  CiffPatch mode;

  std::size_t Count() const { return bytes.size() / 2; }
  /// Takes what stands there, after it was replaced by what is known where that is asked for.
  void Exchange(std::size_t index, std::optional<std::uint16_t>& value) const {
    if (index >= Count()) return;
    if (mode == CiffPatch::Apply && value) {
      bytes[2 * index] = static_cast<std::byte>(*value & 0xff);
      bytes[2 * index + 1] = static_cast<std::byte>(*value >> 8);
    }
    Take(index, value);
  }
  void Take(std::size_t index, std::optional<std::uint16_t>& value) const {
    if (index < Count()) value = ByteView(bytes, ByteOrder::Little).readShort(2 * index);
  }
};

void ExchangeThree(const Words& words, std::optional<std::array<std::uint16_t, 3>>& value) {
  constexpr std::size_t first = 55;
  if (words.Count() < first + 3) return;
  const bool known = value.has_value();
  auto three = value.value_or(std::array<std::uint16_t, 3>{});
  for (std::size_t i = 0; i < three.size(); ++i) {
    auto word = known ? std::optional(three[i]) : std::nullopt;
    words.Exchange(first + i, word);
    three[i] = *word;
  }
  value = three;
}

void TakeRecord(std::uint16_t number, const Words& words, CiffSettings& settings) {
  switch (number) {
    case 0x2a:
      words.Take(7, settings.settingC);
      return ExchangeThree(words, settings.settingA);
    case 0x2d:
      return words.Exchange(42, settings.settingB);
    case 0xae:
      return words.Exchange(0, settings.colorTemperature);
    case 0xb4:
      return words.Exchange(0, settings.colorSpace);
    default:
      return;
  }
}

/// None of a heap that is damaged.
std::vector<CiffRecord> RecordsOf(std::span<const std::byte> bytes, const CiffHeap& heap) {
  try {
    return ReadCiffDirectory(MemorySource(bytes), heap, kAnyCiffEntries);
  } catch (ExifException) {
    return {};
  }
}

class SettingsWalk {
 public:
  SettingsWalk(CiffSettings& settings, CiffPatch mode) : settings_(settings), mode_(mode) {}

  void Walk(std::span<std::byte> heap, int depth) {
    if (depth > kMaxDepth) return;
    if (!visited_.insert({heap.data(), heap.size()}).second) return;
    const CiffHeap all{{0, heap.size()}, ByteOrder::Little, 0};
    for (const auto& record : RecordsOf(heap, all)) {
      if (record.IsInEntry() || !all.Holds(record)) continue;
      Take(record, heap.subspan(static_cast<std::size_t>(record.position), record.size), depth);
    }
  }

 private:
  void Take(const CiffRecord& record, std::span<std::byte> data, int depth) {
    if (record.IsShorts()) TakeRecord(record.Number(), {data, mode_}, settings_);
    if (record.IsHeap()) Walk(data, depth + 1);
  }

  CiffSettings& settings_;
  CiffPatch mode_;
  std::set<std::pair<const std::byte*, std::size_t>> visited_;
};

}  // namespace

void PatchSettings(std::span<std::byte> heap, CiffSettings& settings, CiffPatch mode) {
  SettingsWalk(settings, mode).Walk(heap, 1);
}

}  // namespace ml::metadata
