#include "rawconvert/batch/batch_conversion.h"

#include <filesystem>

#include "platform/paths.h"
#include "rawconvert/batch/output_chooser.h"
#include "rawconvert/batch/output_directory.h"
#include "rawconvert/batch/time_estimate.h"
#include "rawconvert/conversion_fixture.h"
#include "rawconvert/develop_error.h"
#include "support/ciff_builder.h"

namespace ml::rawconvert {
namespace {

namespace fs = std::filesystem;
using platform::Button;
using platform::FileExistsAnswer;

class BatchRun : public ConversionTest {
 protected:
  void SetUp() override {
    batch.outputDirectory = dir / "out/deep";
    batch.options.format = OutputFormat::Tiff8;
  }
  std::string Add(const std::string& name, const std::string& model = "Canon EOS D60") {
    test::CameraRaw raw{.width = 64, .height = 48, .make = "Canon", .model = model};
    batch.files.push_back(dir.Write(name, test::CrwHeap(raw).BuildFile(test::Endian::Little)));
    return batch.files.back();
  }
  std::vector<Converted> Run() {
    results = RunBatchConversion(batch, settings, developer, {ask, progress, clock}, stop.get_token());
    std::vector<Converted> outcomes;
    for (const auto& file : results) outcomes.push_back(file.result);
    return outcomes;
  }
  std::vector<std::string> Written() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(batch.outputDirectory)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
  }
  std::string Output(const std::string& name) const { return batch.outputDirectory + "/" + name; }

  BatchConversion batch;
  std::vector<ConvertedFile> results;
};

using Outcomes = std::vector<Converted>;
using Names = std::vector<std::string>;

TEST_F(BatchRun, WritesEveryFileWhereItBelongs) {
  Add("a.crw"), Add("sub/b.CRW"), Add("c.crw");
  settings.method = Method::Combined;
  EXPECT_EQ(Run(), (Outcomes{Converted::Yes, Converted::Yes, Converted::Yes}));
  EXPECT_EQ(Written(), (Names{"aC.tif", "bC.tif", "cC.tif"}));
  EXPECT_EQ(progress.positions.back(), std::pair(3, 3));
  EXPECT_EQ(sdk->expected, (Names{batch.files[1], batch.files[2], "", ""}));
  EXPECT_NE(progress.secondTexts[0].find("Converting Raw file 1 of 3\n" + batch.files[0] + "\nTo: " + Output("aC.tif")),
            std::string::npos);
  EXPECT_EQ(progress.secondTexts[0].find("Estimated"), std::string::npos);
  EXPECT_NE(progress.secondTexts[1].find("Estimated time remaining: 00:00:00"), std::string::npos);
  batch.appendMethodLetter = false;
  EXPECT_EQ(ConvertedPath("/x/IMG.1.crw", Method::Linear, batch), Output("IMG.1.tif"));
}

TEST_F(BatchRun, AsksForFilesThatExistAndRemembersAnswersForAll) {
  Add("a.crw"), Add("b.crw"), Add("c.crw"), Add("d.crw");
  for (const char* name : {"a.tif", "b.tif", "c.tif"}) dir.Write(std::string("out/deep/") + name, "old");
  ask.fileAnswers = {FileExistsAnswer::Skip, FileExistsAnswer::SkipAll};
  EXPECT_EQ(Run(), (Outcomes{Converted::Skipped, Converted::Skipped, Converted::Skipped, Converted::Yes}));
  EXPECT_EQ(test::ReadAll(Output("c.tif")), "old");

  ask.fileAnswers = {FileExistsAnswer::SaveAs, FileExistsAnswer::OverwriteAll};
  ask.saveNames = {dir / "other.tif"};
  EXPECT_EQ(Run(), Outcomes(4, Converted::Yes));
  EXPECT_TRUE(fs::exists(dir / "other.tif"));
  EXPECT_EQ(test::ReadAll(Output("a.tif")), "old");
  EXPECT_NE(test::ReadAll(Output("c.tif")), "old");

  ask.fileAnswers = {FileExistsAnswer::Overwrite, FileExistsAnswer::Cancel};
  EXPECT_EQ(Run(), Outcomes{Converted::Yes});
}

TEST_F(BatchRun, NeverOverwritesASource) {
  batch.outputDirectory = dir.Path();
  batch.options.format = OutputFormat::Tiff8;
  const auto source = Add("a.tif");  // read as what it is: no raw file of that kind
  fs::create_symlink(dir / "a.tif", dir / "b.tif");
  batch.files = {dir / "b.tif"};
  const auto before = test::ReadAll(source);
  ask.buttons = {Button::Yes};
  ask.saveNames = {source};
  EXPECT_EQ(Run(), Outcomes{Converted::Skipped});
  ASSERT_EQ(ask.shown.size(), 2u);
  EXPECT_TRUE(ask.shown[0].text.starts_with("Sorry, the source and destination files must be different\nFile: "));
  EXPECT_EQ(ask.shown[1].text, "Source and destination filenames are still the same.\nThis file will be ignored.");
  ask.buttons = {Button::No};
  EXPECT_EQ(Run(), Outcomes{Converted::Skipped});
  EXPECT_EQ(test::ReadAll(source), before);
}

TEST_F(BatchRun, NeverOverwritesAnotherSourceOfTheRun) {
  batch.outputDirectory = dir.Path();
  Add("a.crw"), Add("later.crw");
  fs::create_symlink(dir / "later.crw", dir / "a.tif");
  const auto before = test::ReadAll(batch.files[1]);
  ask.buttons = {Button::Yes};
  ask.saveNames = {batch.files[1]};
  EXPECT_EQ(Run(), (Outcomes{Converted::Skipped, Converted::Yes}));
  EXPECT_FALSE(results[0].message.empty());
  EXPECT_EQ(test::ReadAll(batch.files[1]), before);
}

TEST_F(BatchRun, TwoSourcesOfOneNameAskAsIfTheFirstWereWritten) {
  Add("x/a.crw"), Add("y/a.crw");
  ask.fileAnswers = {FileExistsAnswer::Skip};
  EXPECT_EQ(Run(), (Outcomes{Converted::Yes, Converted::Skipped}));
  // The first of them may be overwritten as all others may; the second may not overwrite the first.
  ask.fileAnswers = {FileExistsAnswer::OverwriteAll, FileExistsAnswer::Skip};
  EXPECT_EQ(Run(), (Outcomes{Converted::Yes, Converted::Skipped}));
  EXPECT_TRUE(ask.fileAnswers.empty());
}

TEST_F(BatchRun, GoesOnAfterAFileThatCannotBeDeveloped) {
  const auto a = Add("a.crw");
  Add("b.crw");
  sdk->failure = 0x10002;
  EXPECT_EQ(Run(), (Outcomes{Converted::Failed, Converted::Failed}));
  ASSERT_EQ(ask.shown.size(), 1u);
  EXPECT_EQ(ask.shown[0].caption, "Convert RAW Files");
  EXPECT_TRUE(ask.shown[0].text.starts_with("Error converting " + a +
                                            "\npsCException = 0x10002\nRaw file is invalid and cannot be converted\n"))
      << ask.shown[0].text;
  EXPECT_TRUE(Written().empty());
}

TEST_F(BatchRun, CarriesTheWhiteBalanceFromFileToFileButNotToTheNextRun) {
  settings.sameWhiteBalance = 3;
  settings.develop.SetWhiteBalance(2);
  Add("a.crw", "Canon EOS-1Ds"), Add("b.crw", "Canon EOS-1Ds");
  for (const auto* directory : {"first", "second"}) {
    batch.outputDirectory = dir / directory;
    camera->calls.clear();
    EXPECT_EQ(Run(), (Outcomes{Converted::Yes, Converted::Yes}));
    std::erase_if(camera->calls, [](const auto& line) { return !line.starts_with("white balance"); });
    ASSERT_EQ(camera->calls.size(), 2u);
    EXPECT_EQ(camera->calls[0], "white balance 2:") << directory;
    EXPECT_TRUE(camera->calls[1].starts_with("white balance 4095: 0")) << directory << camera->calls[1];
  }
}

TEST_F(BatchRun, EndsWhereAFileCannotBeWritten) {
  Add("a.crw"), Add("b.crw"), Add("c.crw");
  fs::create_directories(Output("a.tif"));  // a directory in the place of the file
  ask.fileAnswers = {FileExistsAnswer::OverwriteAll};
  EXPECT_EQ(Run(), Outcomes{Converted::Failed});  // of the second, which was developed meanwhile, nothing came
  ASSERT_EQ(ask.shown.size(), 1u);
  EXPECT_TRUE(ask.shown[0].text.starts_with("Error converting " + batch.files[0] + "\n"));
}

TEST_F(BatchRun, RefusesAFileInPlaceOfTheDirectory) {
  Add("a.crw");
  dir.Write("out", "a file");
  EXPECT_EQ(Run(), Outcomes{});
  ASSERT_EQ(ask.shown.size(), 1u);
  EXPECT_TRUE(ask.shown[0].text.starts_with("Error creating directory:\n")) << ask.shown[0].text;
}

TEST(ConversionDirectory, FollowsTheRule) {
  const std::string source = "/shots/day/a.crw";
  EXPECT_EQ(ConversionDirectory(source, {}), "/shots/day/CONVERTED");
  const std::pair<const char*, const char*> cases[] = {{"/home/me/out", "/home/me/out"},
                                                       {"out/ / ", "/shots/day/out"},
                                                       {"../out", "/shots/out"},
                                                       {"/", "/"},
                                                       {" ", "/shots/day"},
                                                       {"C:\\out", "/shots/day/C:\\out"}};
  for (const auto& [typed, directory] : cases)
    EXPECT_EQ(platform::normaliseDirectory(ConversionDirectory(source, {false, typed})), directory) << typed;
}

TEST(TimeEstimate, CountsWhatIsDone) {
  const TimeEstimate estimate{.start = 1000, .count = 400};
  EXPECT_EQ(estimate.Text(1500, 0), "");
  const auto text = estimate.Text(1000 + 45, 2);  // 398 files of 22.5 seconds
  EXPECT_TRUE(text.starts_with("Estimated time remaining: 02:29:15\nReady at approximately ")) << text;
  EXPECT_TRUE(text.ends_with("\nAverage conversion time: 22 secs")) << text;
}

}  // namespace
}  // namespace ml::rawconvert
