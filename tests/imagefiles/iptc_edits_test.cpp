#include "imagefiles/edits/iptc_edits.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "metadata/iptc/iptc_dates.h"
#include "platform/errors.h"
#include "support/avi_builder.h"
#include "support/fakes.h"
#include "support/jp2_builder.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/png_builder.h"
#include "support/psd_builder.h"
#include "support/refusal.h"
#include "support/temp_dir.h"

namespace ml::imagefiles {
namespace {

using metadata::IptcItem;
using Items = std::vector<IptcItem>;

class IptcEdits : public testing::Test {
 protected:
  std::unique_ptr<ImageFile> Open(const std::string& path) { return CreateImageFile(path, options); }
  Items Read(const std::string& path) { return Open(path)->Exif().iptc; }
  IptcEditTools Tools(WriteMode mode = WriteMode::Write) { return {edit, locale, mode}; }
  std::string Jpeg(const std::string& name, const std::vector<test::IptcEntry>& entries) {
    const auto resources = test::ImageResources({{1028, test::IptcBlock(entries)}, {1061, "digest"}});
    const auto photo = test::MakePhoto({.width = 64, .height = 48});
    return dir.Write(name, test::InsertSegments(photo, test::ResourceSegment(resources)));
  }

  test::TempDir dir;
  ImageFileOptions options;
  CompanionFinder companions{options};
  EditTools edit{options, companions, {.stateDirectory = dir / "state"}};
  platform::LocaleText locale = platform::LocaleText::FromEnvironment();
};

TEST_F(IptcEdits, ApplyKeepsWhatNoEditorShowsAndWritesOnlyChanges) {
  const std::string longValue(10'240, 'l');
  const auto path = Jpeg("a.jpg", {{90, "\x1b%G", 1}, {200, "unknown"}, {105, longValue}, {120, "old"}, {25, "old"}});
  const Items values = {{2, 120, "@model@, me@home"}, {2, 25, "new"}, {2, 80, ""}};
  const Items expected = {
      {1, 90, "\x1b%G"}, {2, 200, "unknown"}, {2, 105, longValue}, {2, 120, "Sample, me@home"}, {2, 25, "new"}};
  const auto before = test::ReadAll(path);
  EXPECT_TRUE(ApplyIptc(*Open(path), values, Tools(WriteMode::DryRun)).changed);
  EXPECT_EQ(test::ReadAll(path), before);
  EXPECT_TRUE(ApplyIptc(*Open(path), values, Tools()).changed);
  EXPECT_EQ(Read(path), expected);
  const auto written = test::ReadAll(path);
  EXPECT_FALSE(ApplyIptc(*Open(path), values, Tools()).changed);
  EXPECT_EQ(test::ReadAll(path), written);
  const auto shorter = ApplyIptc(*Open(path), {{2, 105, "short"}}, Tools());
  EXPECT_EQ(shorter.items, (Items{{2, 200, "unknown"}, {2, 105, "short"}})) << "a new value takes a long one's place";
}

TEST_F(IptcEdits, EachFormatHoldsThem) {
  const auto plain = test::PaintPlain(8, 8, 0);
  const std::pair<std::string, std::string> files[] = {
      {"a.jpg", test::EncodeJpeg(plain)}, {"b.psd", test::EncodePsd(plain)},   {"c.png", test::EncodePng(plain)},
      {"d.jp2", test::EncodeJp2(plain)},  {"e.avi", test::EncodeAvi({plain})}, {"f.crw", "no heap"},
  };
  const Items values = {{2, 25, "one"}, {2, 25, "two"}, {2, 120, "A caption"}};
  for (const auto& [name, content] : files) {
    const auto path = dir.Write(name, content);
    const bool needsThm = name == "e.avi" || name == "f.crw";
    if (needsThm) {
      CompanionFinder before(options);
      EXPECT_THROW(ApplyIptc(*Open(path), values, {{options, before, edit.edit}, locale}), platform::UserError) << name;
      dir.Write(name.substr(0, 1) + ".THM", test::EncodeJpeg(plain));
    }
    ApplyIptc(*Open(path), values, Tools());
    EXPECT_EQ(Read(path), values) << name;
    EXPECT_EQ(test::ReadAll(path) == content, needsThm) << name;
  }
}

TEST_F(IptcEdits, AFileThatIsGoneIsReadOnly) {
  const std::pair<const char*, const char*> sentences[] = {
      {"gone.psd", "Unable to write IPTC data because image is read-only"},
      {"gone.png", "Unable to write IPTC because image is read-only"}};
  for (const auto& [name, sentence] : sentences) {
    ImageFile gone(*FindFormat(name), dir / name, options);
    EXPECT_EQ(test::Refusal([&] { WriteIptc(gone, {}, edit); }), sentence);
  }
}

TEST_F(IptcEdits, CommentsThatAreCaptions) {
  const auto plain = test::PaintPlain(8, 8, 0);
  const std::pair<std::string, std::string> files[] = {
      {"a.psd", test::EncodePsd(plain)}, {"b.jp2", test::EncodeJp2(plain)}, {"c.png", test::EncodePng(plain)}};
  for (const bool iptcComments : {false, true}) {
    options.iptcComments = iptcComments;
    for (const auto& [name, content] : files) {
      const auto path = dir.Write(name, content);
      SetComment(*Open(path), "A comment", edit);
      const bool isCaption = iptcComments || name != "c.png";
      EXPECT_EQ(Read(path), isCaption ? Items({{2, 120, "A comment"}}) : Items()) << name;
      EXPECT_EQ(Open(path)->GetComment(), "A comment") << name;
      EXPECT_EQ(Open(path)->GetExifComment(), name == "c.png" ? "A comment" : "") << name;
      SetComment(*Open(path), "", edit);
      EXPECT_EQ(Open(path)->GetComment(), "") << name;
      EXPECT_EQ(test::ReadAll(path), content) << name;
    }
  }
  options.iptcComments = false;
  const auto path = dir.Write("a.psd", files[0].second);
  SetComment(*Open(path), std::string(10'238, 'c') + "\xc3\xa4\xc3\xa4", edit);
  EXPECT_EQ(Read(path)[0].value, std::string(10'238, 'c')) << "cut between characters to what can be edited";
}

TEST_F(IptcEdits, MergeGoesThroughTheFilesUpToTheFirstFailure) {
  const auto first = Jpeg("a.jpg", {{25, "a"}, {120, "old"}}), last = Jpeg("z.jpg", {{25, "a"}});
  const auto broken = dir.Write("m.jpg", "\xff\xd8 no picture");
  const auto before = test::ReadAll(last);
  IptcMergeJob job{.paths = {first, broken, last},
                   .values = {{2, 25, "b"}, {2, 105, "@model@"}},
                   .rules = {.mergeKeywords = true, .onlyReplaceEmpty = true, .leaveExistingIfNewEmpty = true},
                   .threads = 1};
  test::ScriptedInteraction user;
  platform::NoProgress progress;
  const platform::SystemClock clock;
  const auto results = MergeIptcInto(job, Tools(), {user, progress, clock}, {});
  ASSERT_EQ(results.size(), 2U);
  const auto shot = Open(first)->Exif().shootingTime;
  EXPECT_EQ(Read(first), (Items{{2, 55, "20030517"},
                                {2, 60, metadata::IptcTime(shot)},
                                {2, 25, "a"},
                                {2, 25, "b"},
                                {2, 105, "Sample"},
                                {2, 120, "old"}}));
  EXPECT_EQ(results[0].items, Read(first));
  ASSERT_EQ(user.shown.size(), 1U);
  EXPECT_EQ(user.shown[0].text, results[1].failure);
  EXPECT_NE(results[1].failure.find(broken), std::string::npos);
  EXPECT_EQ(test::ReadAll(last), before);

  job.exifTimestamp = false;
  job.paths = {last};
  std::stop_source stop;
  stop.request_stop();
  EXPECT_TRUE(MergeIptcInto(job, Tools(), {user, progress, clock}, stop.get_token()).empty());
  EXPECT_TRUE(MergeIptcInto(job, Tools(), {user, progress, clock}, {})[0].changed);
  EXPECT_FALSE(MergeIptcInto(job, Tools(), {user, progress, clock}, {})[0].changed);
  EXPECT_EQ(Read(last), (Items{{2, 25, "a"}, {2, 25, "b"}, {2, 105, "Sample"}}));
}

TEST_F(IptcEdits, MergeTellsTheJournalOfEveryFileThoughSeveralAreWrittenAtOnce) {
  class Counter final : public platform::EditRecorder {
   public:
    void WillReplaceRange(const platform::RangeEdit&) override { ADD_FAILURE(); }
    void WillReplaceFile(const platform::FileEdit& file) override { paths.push_back(file.path); }
    void WillCreateFile(const platform::FileEdit&) override { ADD_FAILURE(); }
    void WillChangeStatus(const std::string&) override {}
    std::vector<std::string> paths;
  };
  IptcMergeJob job{.values = {{2, 105, "@file@"}}};
  for (int i = 0; i < 40; ++i) job.paths.push_back(Jpeg(std::to_string(i) + ".jpg", {{25, "a"}}));
  Counter journal;
  edit.edit.recorder = &journal;
  test::ScriptedInteraction user;
  platform::NoProgress progress;
  const auto results = MergeIptcInto(job, Tools(), {user, progress, platform::SystemClock()}, {});
  ASSERT_EQ(results.size(), job.paths.size());
  for (std::size_t i = 0; i < results.size(); ++i) {
    EXPECT_EQ(results[i].path, job.paths[i]);
    EXPECT_EQ(Read(job.paths[i]), results[i].items);
    const IptcItem name{2, 105, std::to_string(i) + ".jpg"};
    EXPECT_EQ(std::ranges::count(results[i].items, name), 1);
  }
  std::ranges::sort(journal.paths);
  std::ranges::sort(job.paths);
  EXPECT_EQ(journal.paths, job.paths);
}

}  // namespace
}  // namespace ml::imagefiles
