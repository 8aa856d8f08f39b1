#include "metadata/edit/edited_file.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "../memory.h"
#include "metadata/edit/apply_edit.h"
#include "platform/errors.h"
#include "platform/text.h"
#include "support/temp_dir.h"

namespace ml::metadata {
namespace {

using platform::AsBytes;

std::string Content(const ByteSource& source, std::uint64_t offset, std::size_t count) {
  return TextOf(source.ReadUpTo(offset, count));
}

TEST(EditedFile, ReadsLikeTheTextThatTheSameEditsMake) {
  std::mt19937 random(7);
  const auto below = [&](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  for (int round = 0; round < 200; ++round) {
    const std::string original = "abcdefghijklmnopqrstuvwxyz";
    const auto source = SourceOf(original);
    EditedFile edited(source);
    std::string model = original;
    for (int edit = 0; edit < 8; ++edit) {
      const auto at = below(model.size() + 1);
      const auto size = below(model.size() - at + 1);
      const std::string bytes(below(5), static_cast<char>('0' + edit));
      edited.Replace({at, size}, AsBytes(bytes));
      model.replace(at, size, bytes);
      ASSERT_EQ(edited.Size(), model.size());
      const auto from = below(model.size() + 1);
      ASSERT_EQ(Content(edited, from, 100), model.substr(from));
      ASSERT_EQ(Content(edited, from, 3), model.substr(from, 3));
    }
    const auto patches = edited.InPlace();
    if (!patches) continue;
    std::string patched = original;
    for (const auto& patch : patches->patches) {
      ASSERT_EQ(patch.oldBytes.size(), patch.newBytes.size());
      for (std::size_t i = 0; i < patch.newBytes.size(); ++i) {
        ASSERT_EQ(static_cast<char>(patch.oldBytes[i]), original[patch.offset + i]);
        patched[patch.offset + i] = static_cast<char>(patch.newBytes[i]);
      }
    }
    for (const auto byte : patches->appended) patched += static_cast<char>(byte);
    ASSERT_EQ(patched, model);
  }
}

TEST(EditedFile, StaysInPlaceOnlyWhereNothingMoves) {
  const std::string original = "0123456789";
  const auto source = SourceOf(original);
  const auto inPlace = [&](const std::function<void(EditedFile&)>& edit) {
    EditedFile edited(source);
    edit(edited);
    return edited.InPlace().has_value();
  };
  EXPECT_TRUE(inPlace([](EditedFile& e) { e.Overwrite(3, AsBytes("ab")); }));
  EXPECT_TRUE(inPlace([](EditedFile& e) { e.Append(AsBytes("ab")); }));
  EXPECT_TRUE(inPlace([](EditedFile& e) { e.Replace({8, 2}, AsBytes("abcd")); })) << "grows over the end";
  EXPECT_TRUE(inPlace([](EditedFile& e) {
    e.Replace({2, 1}, AsBytes("ab"));
    e.Remove({3, 1});
  })) << "what moved is back at its place";
  EXPECT_FALSE(inPlace([](EditedFile& e) { e.Insert(3, AsBytes("a")); }));
  EXPECT_FALSE(inPlace([](EditedFile& e) { e.Remove({9, 1}); }));
  EXPECT_THROW(inPlace([](EditedFile& e) { e.Replace({9, 2}, {}); }), ExifException);
  EXPECT_THROW(inPlace([](EditedFile& e) { e.Insert(11, AsBytes("a")); }), ExifException);
}

TEST(EditedFile, KnowsWhatItKept) {
  const std::string original = "0123456789";
  const auto source = SourceOf(original);
  EditedFile edited(source);
  edited.Replace({2, 1}, AsBytes("abc"));  // 01abc3456789
  EXPECT_TRUE(edited.Keeps({5, 7}, {3, 7}));
  EXPECT_TRUE(edited.Keeps({7, 2}, {5, 2}));
  EXPECT_TRUE(edited.Keeps({0, 2}, {0, 2}));
  EXPECT_FALSE(edited.Keeps({5, 7}, {3, 6}));
  EXPECT_FALSE(edited.Keeps({4, 3}, {2, 3})) << "reaches into what is new";
  EXPECT_FALSE(edited.Keeps({5, 3}, {4, 3})) << "another stretch";
  EXPECT_FALSE(edited.Keeps({2, 2}, {2, 2}));
  const std::vector<platform::KeptStretch> kept{{0, 0, 2}, {3, 5, 7}};
  EXPECT_EQ(edited.Kept(), kept);
}

TEST(ApplyEdit, RefusesWhatTheCheckOrAnotherProgramForbids) {
  const test::TempDir dir;
  const auto path = dir.Write("photo.jpg", "old");
  const platform::EditOptions options{.stateDirectory = dir / "state"};
  const auto grow = [](EditedFile& e) { e.Insert(0, AsBytes("new ")); };
  const auto refuse = [](const ByteSource&) { throw platform::UserError("no"); };
  EXPECT_THROW(EditFile(path, grow, options, refuse), platform::UserError);
  const auto meanwhile = [&](const ByteSource&) { dir.Write("photo.jpg", "others"); };
  EXPECT_THROW(EditFile(path, grow, options, meanwhile), platform::UserError);
  EXPECT_EQ(test::ReadAll(path), "others");
}

}  // namespace
}  // namespace ml::metadata
