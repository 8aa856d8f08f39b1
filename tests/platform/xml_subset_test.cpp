#include "platform/xml_subset.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace ml::platform;

struct TagCase {
  const char* text;
  bool complete;
  const char* tag;
  const char* rest;
};

TEST(XmlSubset, QuotesProtectTheEndOfATagInFilesOnly) {
  const TagCase inFiles[] = {
      {"x <a b=\">\"> y", true, "<a b=\">\">", " y"},
      {"<a\r\nb>", true, "<a\nb>", ""},
      {"<a b=\"1> <c>", false, "<a b=\"1> <c>", ""},
      {"no tag", false, "", ""},
  };
  for (const auto& c : inFiles) {
    XmlFile file(c.text);
    std::string tag;
    EXPECT_EQ(ReadTagFromFile(file, tag), c.complete) << c.text;
    EXPECT_EQ(tag, c.tag) << c.text;
    EXPECT_EQ(file.Rest(), c.rest) << c.text;
  }
  const TagCase inTexts[] = {
      {"x <a b=\">\"> y", true, "<a b=\">", "\"> y"},
      {"<a", false, "<a", ""},
      {"> no tag", false, "", ""},
  };
  for (const auto& c : inTexts) {
    std::string_view text = c.text;
    std::string tag;
    EXPECT_EQ(ReadTagFromString(text, tag), c.complete) << c.text;
    EXPECT_EQ(tag, c.tag) << c.text;
    EXPECT_EQ(text, c.rest) << c.text;
  }
}

TEST(XmlSubset, TagNames) {
  struct Case {
    const char* tag;
    bool ok;
    const char* name;
    const char* rest;
  };
  const Case cases[] = {
      {"<name>", true, "name", ">"},
      {"name", false, "name", ""},
      {"< \t\r\n< ns:a_1 b>", true, "ns:a_1", " b>"},
      {"</files>", true, "/files", ">"},
      {"<file/>", true, "file/", ">"},
      {"<?xml version>", false, "", "?xml version>"},
      {"</ name>", true, "/", " name>"},
  };
  for (const auto& c : cases) {
    std::string tag = c.tag;
    std::string name;
    EXPECT_EQ(ParseTagName(tag, name), c.ok) << c.tag;
    EXPECT_EQ(name, c.name) << c.tag;
    EXPECT_EQ(tag, c.rest) << c.tag;
  }
}

TEST(XmlSubset, Attributes) {
  struct Case {
    const char* tag;
    bool ok;
    const char *attribute, *value, *rest;
  };
  const Case cases[] = {
      {" name=\"a&amp;b.jpg\"/>", true, "name", "a&amp;b.jpg", "/>"},
      {"name = \t\"say &quot;hi&quot;\">", true, "name", "say \"hi\"", ">"},
      {"flag other=\"1\">", true, "flag", "", "other=\"1\">"},
      {"empty=\"\">", true, "empty", "", ">"},
      {"bare=1>", false, "bare", "", "1>"},
      {"open=\"1>", false, "open", "1>", ""},
      {"/>", false, "", "", "/>"},
  };
  for (const auto& c : cases) {
    std::string tag = c.tag;
    std::string attribute;
    std::string value = "old";
    EXPECT_EQ(ParseAttribute(tag, attribute, value), c.ok) << c.tag;
    EXPECT_EQ(attribute, c.attribute) << c.tag;
    EXPECT_EQ(value, c.value) << c.tag;
    EXPECT_EQ(tag, c.rest) << c.tag;
  }
}

TEST(XmlSubset, ElementValues) {
  struct Case {
    const char* tag;  ///< what ParseTagName left
    const char* text;
    bool ok;
    const char *value, *rest;
  };
  const Case cases[] = {
      {">", "1 &lt; 2</v> more", true, "1 < 2", " more"},
      {" >", "a\nb</v>", true, "a\nb", ""},
      {"/>", "next", true, "", "next"},
      {" x=\"1\">", "text</v>", false, "", "text</v>"},
      {">", "&amp;lt;&quot;</v>", true, "<\"", ""},
      {">", "kept</w> more", false, "kept", " more"},
      {">", "kept</V>", false, "kept", ""},
      {">", "no end", false, "no end", ""},
      {">inside</v>", "rest", true, "inside", "rest"},
  };
  for (const auto& c : cases) {
    std::string_view text = c.text;
    std::string tag = c.tag;
    std::string value = "old";
    EXPECT_EQ(ReadElementValueFromString(text, tag, "v", value), c.ok) << c.tag << c.text;
    EXPECT_EQ(value, c.value) << c.text;
    EXPECT_EQ(text, c.rest) << c.text;

    XmlFile file(c.text);
    tag = c.tag;
    EXPECT_EQ(ReadElementValueFromFile(file, tag, "v", value), c.ok) << c.tag << c.text;
    EXPECT_EQ(value, c.value) << c.text;
    EXPECT_EQ(file.Rest(), c.rest) << c.text;
  }
}

TEST(XmlSubset, WritesElements) {
  std::string out;
  WriteElement(out, 0, "a", "");
  WriteElement(out, 2, "b", "<\"x\" & y>");
  WriteElement(out, 1, "c", -7);
  WriteElement(out, 1, "d", 0.1234567);
  EXPECT_EQ(out, "<a />\r\n\t\t<b>&lt;&quot;x&quot; &amp; y&gt;</b>\r\n\t<c>-7</c>\r\n\t<d>0.123457</d>\r\n");
}

TEST(XmlSubset, AReaderGetsItsValuesOutOfAWrittenFile) {
  XmlFile file(
      "<?xml version=\"1.0\" ?>\r\n<root version=\"9\">\r\n\t<new><v>no</v></new>\r\n\t<v>yes &amp; no</v>\r\n</root");
  std::vector<std::string> values;
  std::string tag, name, value;
  while (ReadTagFromFile(file, tag)) {
    if (ParseTagName(tag, name) && name == "v" && ReadElementValueFromFile(file, tag, "v", value))
      values.push_back(value);
  }
  EXPECT_EQ(values, (std::vector<std::string>{"no", "yes & no"}));
}

}  // namespace
