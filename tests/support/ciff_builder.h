#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/byte_string.h"
#include "support/camera_raw.h"

namespace ml::test {

/// A heap of a CIFF file: data one behind the other, then the directory, in the order in which both were added.
class CiffBuilder {
 public:
  CiffBuilder& Data(int tag, std::string_view data);
  CiffBuilder& Shorts(int tag, const std::vector<int>& values);
  CiffBuilder& Longs(int tag, const std::vector<std::int64_t>& values);
  CiffBuilder& Heap(int tag, const CiffBuilder& heap);
  /// An entry with these numbers for size and offset and nothing in the heap, such as a value kept in the entry
  /// itself (tags with 0x4000), or a lie.
  CiffBuilder& Entry(int tag, std::uint32_t size, std::uint32_t offset);

  /// The heap with the offset of its directory in its last four bytes.
  std::string Build(Endian order) const;
  /// A file with this heap behind a header of 26 bytes.
  std::string BuildFile(Endian order) const;

 private:
  struct Item {
    int tag = 0, width = 0;  ///< width of the numbers; 0: `data`
    std::vector<std::int64_t> numbers{};
    std::string data{};
    std::vector<CiffBuilder> heaps{};  ///< none or one
    bool entryOnly = false;            ///< the two numbers stand in the entry
  };
  std::vector<Item> items_;
};

/// What stands in a camera's heap 0x300A: rotation by `raw.orientation`, time, file number and settings.
CiffBuilder CrwProperties(const CameraRaw& raw);
/// A root heap with sensor data (not decodable), the preview and the properties.
CiffBuilder CrwHeap(const CameraRaw& raw);

}  // namespace ml::test
