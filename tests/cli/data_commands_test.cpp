#include "cli/cli_run.h"
#include "support/jpeg_builder.h"
#include "support/metadata_blocks.h"
#include "support/png_builder.h"
#include "support/sample_photo.h"

/// The commands that show shooting data, texts, IPTC data and comments, and set the last two.
namespace ml::test {
namespace {

class DataCommand : public CliTest {};

TEST_F(DataCommand, IptcIsShownAndSaved) {
  const auto block = IptcBlock({{25, "\xE4"}, {120, "A caption"}});
  const auto resources = ResourceSegment(ImageResources({{1028, block}}));
  const auto photo = dir.Write("a.jpg", InsertSegments(MakePhoto({.width = 60, .height = 40}), resources));
  const auto file = dir / "a.ipt";
  const auto expected = json::parse(
      R"([{"record": 2, "dataset": 25, "value": "\u00e4"}, {"record": 2, "dataset": 120, "value": "A caption"}])");
  EXPECT_EQ(Json({"iptc", photo, "--save", file, "--dry-run"})[0]["iptc"], expected);
  EXPECT_FALSE(ReadAll(file));
  EXPECT_EQ(Json({"iptc", photo, "--save", file})[0]["ok"], true);
  EXPECT_EQ(Json({"iptc", file})[0]["iptc"], expected);
  EXPECT_EQ(ReadAll(file)->substr(7), block);
  EXPECT_EQ(Json({"info", photo})[0]["iptc"], expected);
  const auto again = Json({"iptc", photo, "--save", file}, 1);
  EXPECT_EQ(again[0]["ok"], false);
  EXPECT_NE(again[0]["message"], "");
  EXPECT_EQ(run({"iptc", photo, "--save", file, "--overwrite"}).exitCode, 0);
  EXPECT_EQ(run({"iptc", photo, "--save", photo, "--overwrite"}).exitCode, 1) << "replaced the image";
  EXPECT_EQ(run({"iptc", photo, file, "--save", dir / "b.ipt"}).exitCode, 2);
  EXPECT_EQ(Json({"iptc", dir / "gone.jpg", photo}, 1)[1]["ok"], true);
}

TEST_F(DataCommand, IptcIsSetMergedAndCleared) {
  const auto photo = dir.Write("a.jpg", MakePhoto({.width = 64, .height = 48}));
  const auto other = dir.Write("b.jpg", MakePhoto({.width = 64, .height = 48}));
  const auto text = dir.Write("c.txt", "text");
  const auto original = ReadAll(photo);
  const auto values = [&](const std::string& path) {
    std::string all;
    const auto shown = Json({"iptc", path});
    for (const auto& item : shown[0]["iptc"]) {
      all += std::to_string(item["dataset"].get<int>()) + "=" + item["value"].get<std::string>() + ";";
    }
    return all;
  };
  const std::vector<std::string> set = {"iptc", photo, "--set", "caption=@model@", "--set", "25=a", "--set", "25=b"};
  auto dry = set;
  dry.push_back("--dry-run");
  EXPECT_EQ(Json(dry)[0]["iptc"].size(), 3U);
  EXPECT_EQ(ReadAll(photo), original);
  const auto done = Json(set);
  EXPECT_EQ(done[0]["ok"], true);
  EXPECT_EQ(values(photo), "120=Sample;25=a;25=b;");
  EXPECT_EQ(run(set).output, photo + ": unchanged\n");
  const auto file = dir / "a.ipt";
  Json({"iptc", photo, "--save", file});
  Json({"iptc", other, "--set", "keywords=c", "--set", "headline=old"});
  const auto merged =
      Json({"iptc", other, text, text, text, text, photo, "--merge", file, "--merge-keywords", "--leave-existing"}, 1);
  ASSERT_EQ(merged.size(), 6U) << "one for each file";
  EXPECT_EQ(values(other), "25=c;25=a;25=b;120=Sample;105=old;");
  EXPECT_EQ(merged[1]["ok"], false);
  Json({"iptc", other, "--merge", file, "--exif-timestamp"});
  EXPECT_TRUE(values(other).starts_with("55=20030517;60=101112"));
  EXPECT_EQ(values(other).find("25=c"), std::string::npos);
  Json({"iptc", photo, other, "--set", "25="});
  EXPECT_EQ(values(photo), "120=Sample;");
  EXPECT_EQ(Json({"iptc", photo, "--clear"})[0]["iptc"], json::array());
  EXPECT_EQ(ReadAll(photo), original) << "nothing is left behind";
  for (const auto& wrong : {std::vector<std::string>{"--set", "caption"},
                            {"--set", "999=x"},
                            {"--set", "15=abcd"},
                            {"--set", "55=2003"},
                            {"--merge-keywords"},
                            {"--merge", file, "--clear"},
                            {"--clear", "--save", dir / "b.ipt"}}) {
    std::vector<std::string> arguments = {"iptc", photo};
    arguments.insert(arguments.end(), wrong.begin(), wrong.end());
    EXPECT_EQ(run(arguments).exitCode, 2) << wrong.back();
  }
  EXPECT_EQ(ReadAll(photo), original);
}

TEST_F(DataCommand, CommentsAreShownAndSet) {
  const auto picture = dir.Write("a.png", EncodePng(PaintPlain(8, 8, 0)));
  const auto gif = dir.Write("b.gif", "GIF89a");
  const auto original = ReadAll(picture);
  EXPECT_EQ(Json({"comment", picture, "--set", "A text", "--dry-run"})[0]["comment"], "A text");
  EXPECT_EQ(ReadAll(picture), original);
  const auto set = Json({"comment", picture, gif, "--set", "A text"}, 1);
  EXPECT_EQ(set[0], (json{{"path", picture}, {"comment", "A text"}, {"ok", true}, {"message", ""}}));
  EXPECT_EQ(set[1]["ok"], false);
  EXPECT_EQ(run({"comment", picture}).output, "A text\n");
  EXPECT_EQ(Json({"comment", gif})[0]["comment"], "");
  EXPECT_EQ(Json({"comment", picture, "--set", ""})[0]["comment"], "");
  EXPECT_EQ(ReadAll(picture), original);
  EXPECT_EQ(Json({"comment", dir / "gone.jpg"}, 1)[0]["ok"], false);
}

TEST_F(DataCommand, InfoTellsTheFieldsWithContent) {
  const auto photo = dir.Write("a.jpg", MakePhoto({.width = 64, .height = 48, .orientation = 6, .make = "M\xE4ker"}));
  const auto info = Json({"info", photo, dir / "gone.jpg"}, 1);
  ASSERT_EQ(info.size(), 2U);
  EXPECT_EQ(info[0]["path"], photo);
  EXPECT_EQ(info[0]["make"], "M\u00E4ker");
  EXPECT_EQ(info[0]["dateTime"], "2003:05:17 10:11:12");
  EXPECT_EQ(info[0]["shootingTime"], 1'053'159'072);
  EXPECT_EQ(info[0]["imageWidth"], 64);
  EXPECT_EQ(info[0]["exifInvalid"], false);
  EXPECT_EQ(info[0]["iptc"], json::array());
  for (const char* absent : {"comment", "isoShort", "focalLength", "hasIccProfile", "exifBlock", "userCommentPtr"}) {
    EXPECT_FALSE(info[0].contains(absent)) << absent;
  }
  EXPECT_EQ(info[1]["path"], dir / "gone.jpg");
  EXPECT_EQ(info[1]["exifInvalid"], false);
  EXPECT_TRUE(info[1].contains("message"));
  EXPECT_EQ(Json({"info", photo, "--setting", "UseJpegExifOrientation=1"})[0]["imageWidth"], 48);
  EXPECT_NE(run({"info", photo}).output.find("  imageWidth: 64\n"), std::string::npos);
}

TEST_F(DataCommand, TextsInAnyEncodingAreShownReadablyAndLeftAsTheyAre) {
  const std::pair<std::string, std::string> cases[] = {
      {"Gr\xC3\xBC\xC3\x9F", "Gr\u00FC\u00DF"},          // UTF-8
      {"Gr\xFC\xDF \x80 5", "Gr\u00FC\u00DF \u20AC 5"},  // Windows-1252
      {"\xC3\xBC \xFC", "\u00C3\u00BC \u00FC"},          // both: one encoding for the whole text
      {"a\x81 \xFF(", "a\uFFFD \u00FF("},                // neither
      {"cut \xE2\x82", "cut \u00E2\u201A"},
      {"half \xED\xA0\x80", "half \u00ED\u00A0\u20AC"},  // of a pair
  };
  for (const auto& [bytes, shown] : cases) {
    SCOPED_TRACE(shown);
    const auto resources = ResourceSegment(ImageResources({{1028, IptcBlock({{120, bytes}})}}));
    const auto content =
        InsertSegments(MakePhoto({.width = 16, .height = 16, .make = bytes}),
                       resources + XmpSegment(XmpPacket("", "<aux:SerialNumber>" + bytes + "</aux:SerialNumber>")));
    const auto photo = dir.Write("a.jpg", content);
    auto info = Json({"info", photo})[0];
    EXPECT_EQ(info["make"], shown);
    EXPECT_EQ(info["iptc"][0]["value"], shown);
    EXPECT_EQ(info["bodySerial"], shown);
    EXPECT_EQ(Json({"expand", "@IPTC_caption@", photo})[0]["text"], shown);
    EXPECT_EQ(run({"expand", "@IPTC_caption@", photo}).output, shown + "\n");
    EXPECT_EQ(ReadAll(photo), content);
  }
}

TEST_F(DataCommand, TextHasThreeForms) {
  const auto photo = dir.Write("a.jpg", MakePhoto({.width = 64, .height = 48}));
  const auto text = [&](const std::string& form) {
    return Json({"text", photo, "--as", form})[0]["text"].get<std::string>();
  };
  EXPECT_TRUE(text("properties").starts_with("File: " + photo + "\nFile size: "));
  EXPECT_TRUE(text("summary").starts_with("2003:05:17 10:11:12\nFile size: "));
  EXPECT_EQ(text("short"), text("summary"));
  EXPECT_EQ(run({"text", photo}).output, text("properties") + "\n");
  EXPECT_EQ(run({"text", photo, "--as", "long"}).exitCode, 2);
}

TEST_F(DataCommand, ExpandFillsInTokensAndDescribesThem) {
  const auto photo = dir.Write("a1.jpg", MakePhoto({.width = 64, .height = 48}));
  const auto expanded = Json({"expand", "@dir@ @file@ @year@ @model@ @nothing@", photo, dir / "gone.jpg"}, 1);
  ASSERT_EQ(expanded.size(), 2U);
  EXPECT_EQ(expanded[0], (json{{"path", photo}, {"text", dir.Path() + "/ a1.jpg 2003 Sample @nothing@"}}));
  EXPECT_EQ(expanded[1]["text"], dir.Path() + "/ gone.jpg   @nothing@");
  EXPECT_EQ(run({"expand", "@fileAsNumber@\n@width@\n", photo, photo}).output, "1\n64\n1\n64\n");
  EXPECT_EQ(Json({"expand", "@dir@", "some/a.jpg"}, 1)[0]["text"].get<std::string>().front(), '/');
  EXPECT_EQ(run({"expand", "@iso@ @x@", "--describe"}).output, "ISO @x@\n");
  EXPECT_EQ(Json({"expand", "@iso@", "--describe"}), (json{{{"text", "ISO"}}}));
  EXPECT_EQ(Json({"expand", "@iso@", "--describe", photo}), (json{{{"path", photo}, {"text", "ISO"}}}));
  EXPECT_EQ(run({"expand", "@iso@"}).exitCode, 2);
}

}  // namespace
}  // namespace ml::test
