#include "metadata/byte_writer.h"

#include <gtest/gtest.h>

#include "memory.h"

namespace ml::metadata {
namespace {

std::string Written(ByteOrder order) {
  ByteWriter out(order);
  out.Byte(0xab);
  out.Short(0x1122);
  const auto place = out.ReserveLong();
  out.Text("xy");
  out.Zeros(1);
  out.Long(0x01020304);
  out.PatchLong(place, static_cast<std::uint32_t>(out.Size()));
  return TextOf(out.Take());
}

TEST(ByteWriter, PutsNumbersInItsOrderAndPatchesWhatWasReserved) {
  EXPECT_EQ(Written(ByteOrder::Big), std::string("\xab\x11\x22\0\0\0\x0exy\0\1\2\3\4", 14));
  EXPECT_EQ(Written(ByteOrder::Little), std::string("\xab\x22\x11\x0e\0\0\0xy\0\4\3\2\1", 14));
}

}  // namespace
}  // namespace ml::metadata
