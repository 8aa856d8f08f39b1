#include "imagefiles/tools/export_exif.h"

#include <filesystem>

#include "imagefiles/tools/tool_test.h"
#include "metadata/exif_text.h"
#include "support/jpeg_builder.h"
#include "support/sample_photo.h"

namespace ml::imagefiles {
namespace {

using platform::FileExistsAnswer;

/// The fields of each line as programs read such files: a field in quotation marks may hold anything, in it two of them
/// are one. Knows no more than that.
std::vector<std::vector<std::string>> ReadTable(const std::string& text, char delimiter) {
  std::vector<std::vector<std::string>> rows;
  bool quoted = false, start = true, newRow = true;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (newRow) rows.push_back({""});
    newRow = false;
    auto& field = rows.back().back();
    const char c = text[i];
    if (quoted && c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
      field += text[++i];
    } else if (c == '"' && (start || quoted)) {
      quoted = !quoted;
    } else if (!quoted && c == delimiter) {
      rows.back().emplace_back();
    } else if (!quoted && (c == '\n' || c == '\r')) {
      newRow = true;
    } else {
      field += c;
    }
    start = newRow || (!quoted && c == delimiter);
  }
  return rows;
}

class ExportTest : public ToolTest {
 protected:
  std::string Photo(const std::string& name, const std::string& comment) {
    test::TiffBuilder first, exif;
    exif.Undefined(37510, std::string("ASCII\0\0\0", 8) + comment + std::string(1, '\0'));
    first.Ascii(272, "Sample").Directory(34665, exif);
    return Write(name, test::InsertSegments(test::EncodeJpeg(test::PaintPlain(8, 8, 0)), test::ExifSegment(first)));
  }
  ToolReport Export(const std::vector<std::string>& images, OnFailure onFailure = OnFailure::Stop) {
    return ExportExif(images, settings_, locale_, tools_, Run(onFailure));
  }
  ExportSettings settings_{.output = dir_ / "info.txt"};
  platform::LocaleText locale_;
};

TEST_F(ExportTest, TakesOneCharacterAsDelimiter) {
  const std::pair<const char*, std::optional<char>> cases[] = {{",", ','},   {";", ';'}, {"|", '|'}, {"^t", '\t'},
                                                               {"\t", '\t'}, {",,", {}}, {"", {}},   {":", {}},
                                                               {"t", {}},    {"^", {}}};
  for (const auto& [typed, delimiter] : cases) {
    EXPECT_EQ(ParseDelimiter(typed), delimiter) << typed;
    if (delimiter) {
      EXPECT_EQ(ParseDelimiter(DelimiterText(*delimiter)), delimiter);
    }
  }
}

TEST_F(ExportTest, WhateverACaptionHoldsItStaysOneField) {
  const std::pair<std::string, std::string> captions[] = {
      {"plain", "plain"},
      {"two\nlines", "two lines"},
      {"and\r\nthree\rmore", "and three more"},
      {"a,b;c|d\te", ""},  // a blank for the delimiter alone
      {"\"quoted\" at once", "\"quoted\" at once"},
      {"in the \"middle\"", "in the \"middle\""},
      {"one \" alone", "one \" alone"},
      {"\"", "\""},
      {"forged!#t#!field!#n#!end", "forged!#t#!field end"},
      {"@iso@", ""},
      {"Gr\xfc\xdf"
       "e",
       "Gr\xc3\xbc\xc3\x9f"
       "e"},
  };
  std::vector<std::string> images;
  for (const auto& [caption, told] : captions) {
    images.push_back(Photo(std::to_string(images.size()) + ".jpg", caption));
  }
  for (const char delimiter : {',', ';', '|', '\t'}) {
    settings_ = {
        .format = "@file@|@caption@|@model@", .delimiter = delimiter, .header = true, .output = dir_ / "info.txt"};
    EXPECT_EQ(CountDone(Export(images)), static_cast<int>(images.size()));
    const auto rows = ReadTable(Content(settings_.output), delimiter);
    ASSERT_EQ(rows.size(), images.size() + 1);
    EXPECT_EQ(rows[0], (std::vector<std::string>{"Filename", "Comments", "Model"}));
    for (std::size_t i = 0; i < images.size(); ++i) {
      ASSERT_EQ(rows[i + 1].size(), 3U) << i << " " << delimiter;
      auto told = captions[i].second;
      if (told.empty() && i == 3) {
        told = "a,b;c|d e";  // a tab is no character for a line of text anyway
        std::ranges::replace(told, delimiter, ' ');
      }
      EXPECT_EQ(rows[i + 1][1], told) << i << " " << delimiter;
      EXPECT_EQ(rows[i + 1][2], "Sample");
    }
  }
}

TEST_F(ExportTest, EveryRealFileGivesALineOfAllFields) {
  std::vector<std::string> images;
  if (const auto samples = test::SamplesDir()) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(*samples)) {
      if (entry.is_regular_file() && FindFormat(entry.path().string()) != nullptr) images.push_back(entry.path());
    }
  }
  for (const char delimiter : {',', ';', '|', '\t'}) {
    settings_.delimiter = delimiter;
    Export(images);
    const auto rows = ReadTable(Content(settings_.output), delimiter);
    ASSERT_EQ(rows.size(), images.size());
    for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(rows[i].size(), 36U) << images[i];
  }
}

TEST_F(ExportTest, TheFormatIsCutAtItsDelimitersOfAllKinds) {
  const auto image = Photo("a.jpg", "");
  settings_.delimiter = ',';
  settings_.format = "@model@,x|y!#t#!z!#n#!w";
  Export({image});
  EXPECT_EQ(Content(settings_.output), "Sample,x,y,z w\n");
  settings_.format.clear();
  settings_.header = true;
  Export({image});
  const auto rows = ReadTable(Content(settings_.output), ',');
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].size(), 36U);
  EXPECT_EQ(rows[1].size(), 36U);
  EXPECT_EQ(rows[0].back(), "Comments");
}

TEST_F(ExportTest, ATableAppearsWholeOrNotAtAllAndReplacesNoImage) {
  const auto image = Photo("a.jpg", ""), before = Content(image), missing = dir_ / "none.jpg";
  settings_.format = "@file@";
  EXPECT_NE(Refusal([&] { Export({image, missing}); }), "");
  EXPECT_FALSE(std::filesystem::exists(settings_.output));
  EXPECT_EQ(Letters(Export({missing, image}, OnFailure::GoOn)), "FD");
  EXPECT_EQ(Content(settings_.output), "a.jpg\n");
  const auto link = dir_ / "link.txt";
  std::filesystem::create_symlink(image, link);
  for (const auto& output : {image, dir_ / "new.png", link, dir_ / "no/where.txt"}) {
    settings_.output = output;
    EXPECT_TRUE(Refusal([&] { Export({image}); }).starts_with("ERROR: Unable to write EXIF data to:\n" + output));
  }
  EXPECT_TRUE(Content(image) == before);
}

TEST_F(ExportTest, TextsStandBesideTheirImagesAndAskBeforeTheyReplace) {
  const auto a = Photo("a.jpg", "first"), tif = Photo("a.tif", ""), b = Photo("b.jpg", "");
  const auto own = Write("b.txt", "a note");
  settings_.mode = ExportMode::TextPerImage;
  EXPECT_EQ(TextFileNames({a, tif, b}), (std::vector<std::string>{a + ".txt", tif + ".txt", own}));
  EXPECT_EQ(TextFileNames({a, b}), (std::vector<std::string>{dir_ / "a.txt", own}));
  ask_.fileAnswers = {FileExistsAnswer::Skip};
  EXPECT_EQ(Letters(Export({a, b})), "DK");
  EXPECT_EQ(Content(own), "a note");
  auto exif = Read(a);
  EXPECT_EQ(Content(dir_ / "a.txt"), metadata::GetPropertiesText(exif, locale_) + "\n");
  ask_.fileAnswers = {FileExistsAnswer::OverwriteAll};
  EXPECT_EQ(Letters(Export({a, b})), "DD");
  EXPECT_NE(Content(own), "a note");
  ask_.fileAnswers = {FileExistsAnswer::SaveAs};
  ask_.saveNames = {b};
  EXPECT_EQ(Refusal([&] { Export({a}); }), "Not written, as it is an image:\n" + b);
  EXPECT_THROW(Export({a}), platform::Cancelled);
}

}  // namespace
}  // namespace ml::imagefiles
