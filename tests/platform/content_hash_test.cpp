#include "platform/content_hash.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace ml::platform {
namespace {

TEST(ContentHash, CountsEveryByteAndNotThePieces) {
  std::vector<std::byte> bytes(101);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::byte>(i * 7);
  std::set<std::uint64_t> values;
  for (std::size_t size = 0; size <= bytes.size(); ++size) {
    const auto all = std::span(bytes).first(size);
    values.insert(HashOf(all));
    for (std::size_t cut = 0; cut <= size; ++cut) {
      ContentHash hash;
      hash.Add(all.first(cut));
      hash.Add(all.subspan(cut));
      ASSERT_EQ(hash.Value(), HashOf(all)) << size << " cut at " << cut;
    }
  }
  for (auto& byte : bytes) {
    for (int bit = 0; bit < 8; ++bit) {
      byte ^= static_cast<std::byte>(1 << bit);
      values.insert(HashOf(bytes));
      byte ^= static_cast<std::byte>(1 << bit);
    }
  }
  EXPECT_EQ(values.size(), 102U + 101U * 8U) << "each change is seen";
}

}  // namespace
}  // namespace ml::platform
