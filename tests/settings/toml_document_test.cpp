#include "settings/toml_document.h"

#include <gtest/gtest.h>

#include "support/refusal.h"

namespace ml::settings {
namespace {

TEST(TomlDocument, BringsEveryTextBack) {
  std::string control;
  for (char c = 0; c < 32; ++c) control += c;
  for (const std::string& text :
       {std::string(), control, std::string("\x7f \"quoted\" 'single' '''three''' \"\"\" back\\slash"),
        std::string("two\nlines\r\n"), std::string("/photos/\xc3\xa9t\xc3\xa9"), std::string("/photos/\xe9t\xe9"),
        std::string("hex:"), std::string("hex:not"), std::string("\xff\x00\xfe", 3), std::string("\xef\xbf\xbe")}) {
    TomlDocument document;
    document.PutText({"ImageFilename"}, text);
    document.PutText({text, "Profiles"}, "value");
    const TomlDocument back(document.Content());
    EXPECT_EQ(back.Text({"ImageFilename"}), text);
    EXPECT_EQ(back.Text({text, "Profiles"}), "value");
    EXPECT_EQ(back.Keys("Profiles"), std::vector{text});
  }
}

TEST(TomlDocument, WritesBytesThatAreNoUtf8AsDigits) {
  TomlDocument document;
  document.PutText({"ImageFilename"}, "/\xe9");
  EXPECT_EQ(document.Content(), "ImageFilename = \"hex:2FE9\"\n");
  EXPECT_EQ(TomlDocument("a = 'hex:2F E9'").Text({"a"}), std::nullopt);
}

TEST(TomlDocument, ReadsIntegersOf32BitsOnly) {
  struct Case {
    const char* stored;
    std::optional<int> value;
  };
  for (const auto& c : {Case{"2147483647", 2147483647}, Case{"-2147483648", -2147483647 - 1}, Case{"0xFF", 255},
                        Case{"2147483648", {}}, Case{"-2147483649", {}}, Case{"1.0", {}}, Case{"true", {}},
                        Case{"'1'", {}}, Case{"[1]", {}}, Case{"{a = 1}", {}}}) {
    const TomlDocument document(std::string("a = ") + c.stored);
    EXPECT_EQ(document.Integer({"a"}), c.value) << c.stored;
    EXPECT_TRUE(document.Has({"a"}));
  }
}

TEST(TomlDocument, ToldByANumberInPlaceOfATable) {
  TomlDocument document("Profiles = 1\n");
  EXPECT_TRUE(document.Keys("Profiles").empty());
  EXPECT_FALSE(document.Has({"Model", "Profiles"}));
  document.PutInteger({"Model", "Profiles"}, 3);
  EXPECT_EQ(TomlDocument(document.Content()).Integer({"Model", "Profiles"}), 3);
}

TEST(TomlDocument, KnowsWhetherItChanged) {
  TomlDocument document("a = 1\nb = 'x'\n");
  document.PutInteger({"a"}, 1);
  document.PutText({"b"}, "x");
  document.Remove({"c"});
  EXPECT_FALSE(document.Changed());
  document.PutText({"a"}, "1");
  EXPECT_TRUE(document.Changed());
  EXPECT_EQ(document.Text({"a"}), "1");
}

TEST(TomlDocument, TellsTheLineThatDoesNotParse) {
  for (const std::string content : {"a = 1\nb = \n", "a = 1\nb = 'caf\xe9'\n", "a = 1\na = 2\n"}) {
    const auto said = test::Refusal([&] { const TomlDocument document(content); });
    EXPECT_TRUE(said.starts_with("line 2:")) << content << said;
  }
}

}  // namespace
}  // namespace ml::settings
