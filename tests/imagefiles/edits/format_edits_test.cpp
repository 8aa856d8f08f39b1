#include "imagefiles/edits/format_edits.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "imagefiles/edits/adjust_dates.h"
#include "platform/edit_batch.h"
#include "platform/errors.h"
#include "support/avi_builder.h"
#include "support/bmp_builder.h"
#include "support/camera_raw.h"
#include "support/ciff_builder.h"
#include "support/fake_trash.h"
#include "support/fakes.h"
#include "support/gif_builder.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/picture_tiff.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

constexpr std::int64_t kSecond = 1'000'000'000, kLongAgo = 1'000'000'000 * kSecond + 123'456;

TEST(FormatEdits, HaveAFunctionForAllThatTheRowsPromise) {
  for (const auto& row : Formats()) {
    SCOPED_TRACE(row.className);
    const auto& edits = EditsOf(row.format);
    ASSERT_EQ(edits.format, row.format);
    EXPECT_EQ(edits.rotate != nullptr, row.rotateRefusal.empty());
    EXPECT_EQ(edits.setComment != nullptr, row.commentRefusal.empty());
    EXPECT_EQ(edits.writeIptc != nullptr, row.iptcHome != IptcHome::None);
    EXPECT_EQ(edits.adjustDateTime != nullptr, row.adjustsDateTime);
  }
}

enum class Kind { Turn, Comment, Iptc, Dates };

bool IsPromised(Kind kind, const FormatRow& row) {
  switch (kind) {
    case Kind::Turn:
      return row.rotateRefusal.empty();
    case Kind::Comment:
      return row.commentRefusal.empty();
    case Kind::Iptc:
      return row.iptcHome != IptcHome::None;
    case Kind::Dates:
      return true;  // the time of the file moves at least
  }
  return false;
}

struct State {
  std::string content;
  platform::FileStatus status;
  bool operator==(const State&) const = default;
};

class Undoing : public testing::Test {
 protected:
  /// All of them protected and of the same time.
  void WriteFiles(const std::vector<std::pair<std::string, std::string>>& files) {
    for (const auto& [name, content] : files) {
      const auto path = dir_.Write(name, content);
      platform::SetModificationTime(path, kLongAgo);
      ASSERT_EQ(::chmod(path.c_str(), 0440), 0);
      paths_.push_back(path);
    }
  }
  std::map<std::string, State> Look() const {
    std::map<std::string, State> states;
    for (const auto& path : paths_) states[path] = {*test::ReadAll(path), *platform::ReadFileStatus(path)};
    return states;
  }
  void Do(Kind kind, const std::string& path) {
    platform::EditBatch batch(journal_, "an edit");
    CompanionFinder companions(options_);
    const EditTools tools{options_, companions, {.recorder = &batch, .stateDirectory = dir_ / "state"}};
    if (kind == Kind::Dates) return AdjustDates(path, 3600, true, tools);
    const auto file = CreateImageFile(path, options_);
    if (kind == Kind::Turn) Rotate(*file, imaging::Turn::cw90, tools);
    if (kind == Kind::Comment) SetComment(*file, "a comment", tools);
    if (kind == Kind::Iptc) WriteIptc(*file, {.items = {{2, 25, "keyword"}}}, tools);
  }
  void CheckKind(Kind kind, const std::string& path) {
    const auto before = Look();
    if (!IsPromised(kind, CreateImageFile(path, options_)->Row())) {
      EXPECT_THROW(Do(kind, path), platform::UserError);
      EXPECT_EQ(Look(), before);
      return;
    }
    ASSERT_NO_THROW(Do(kind, path));
    const auto after = Look();
    EXPECT_NE(after, before);
    for (const auto& [changed, state] : after) {
      EXPECT_EQ(state.status.mode, 0440U) << changed;
      if (kind == Kind::Dates && changed == path) {
        EXPECT_EQ(state.status.modified, kLongAgo + 3600 * kSecond);
      } else {
        const bool keepsTime = options_.preserveModificationTime || state.content == before.at(changed).content;
        EXPECT_EQ(state.status.modified == kLongAgo, keepsTime) << changed;
      }
    }
    journal_.Undo();
    for (const auto& [name, state] : Look()) {
      EXPECT_TRUE(state.content == before.at(name).content) << name;
      EXPECT_EQ(state.status, before.at(name).status) << name;
    }
  }

  test::TempDir dir_;
  ImageFileOptions options_{.iptcComments = true};
  std::vector<std::string> paths_;
  test::FakeTrash trash_{dir_ / "trash"};
  test::FakeClock clock_;
  platform::EditJournal journal_{{.trash = trash_, .clock = clock_, .stateDirectory = dir_ / "state"}};
};

TEST_F(Undoing, GivesBackBytesTimesAndProtectionOfEveryEditAndCompanion) {
  const test::CameraRaw raw{.width = 64, .height = 48, .previewWidth = 64, .previewHeight = 48};
  const auto plain = test::PaintLandscape(20, 10, 1);
  const auto thm = test::MakeThm(raw);
  const auto description = std::string(30, ' ');
  WriteFiles({
      {"a.jpg", thm},
      {"a.tif", test::PictureDirectory(plain).Ascii(306, raw.dateTime).Build()},
      {"a.nef", test::NefDirectories(raw).Build()},
      {"a.orf", test::OrfDirectories(raw).Ascii(270, description).Build()},
      {"a.raf", test::RafFile(raw, test::RafDirectories(raw))},
      {"a.mrw", test::MrwFile(raw, test::MrwDirectories(raw))},
      {"a.pef", test::PefDirectories(raw).Build()},
      {"b.crw", test::CrwHeap(raw).BuildFile(test::Endian::Little)},
      {"c.avi", test::EncodeAvi({plain})},
      {"d.tif", test::Eos1DDirectories(raw).Without(274).Pieces(50000, 50001, {std::string(1'700'000, 'x')}).Build()},
      {"a.psd", test::EncodePsd(plain)},
      {"a.png", test::EncodePng(plain)},
      {"a.jp2", test::EncodeJp2(plain)},
      {"a.bmp", test::EncodeBmp(plain)},
      {"a.gif", test::EncodeGif({plain})},
  });
  const auto images = paths_;
  WriteFiles({{"b.thm", thm}, {"c.thm", thm}, {"d.jpg", thm}});
  ASSERT_EQ(CreateImageFile(dir_ / "d.tif", options_)->Row().format, Format::Eos1DRaw);
  for (const bool preserve : {false, true}) {
    options_.preserveModificationTime = preserve;
    for (const auto& path : images) {
      for (const auto kind : {Kind::Turn, Kind::Comment, Kind::Iptc, Kind::Dates}) {
        SCOPED_TRACE(path + " " + std::to_string(static_cast<int>(kind)) + (preserve ? " preserve" : ""));
        CheckKind(kind, path);
      }
    }
  }
}

}  // namespace
}  // namespace ml::imagefiles
