#include "settings/settings_store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

#include "platform/data_folders.h"
#include "platform/errors.h"
#include "settings/toml_document.h"
#include "support/temp_dir.h"

namespace ml::settings {
namespace {

class Store : public testing::Test {
 protected:
  test::TempDir dir;
  const std::string path = dir / "Tarnwick/Marrowlantern/100.toml";

  void SetUp() override { ::setenv("XDG_CONFIG_HOME", dir.Path().c_str(), 1); }
  void Put(const std::string& content) const { dir.Write("Tarnwick/Marrowlantern/100.toml", content); }
  std::string Content() const { return test::ReadAll(path).value_or("missing"); }
};

TEST_F(Store, BeginsWithoutAFile) {
  SettingsStore store;
  EXPECT_EQ(store.Path(), path);
  std::string warning;
  auto settings = store.Load(&warning);
  EXPECT_EQ(warning, "");
  settings.catalogue.imageFilename = "/photos/caf\xe9.jpg";
  settings.raw.developTone = -3;
  store.Save(settings);

  EXPECT_EQ(SettingsStore().Load().catalogue.imageFilename, settings.catalogue.imageFilename);
  const TomlDocument file(Content());
  EXPECT_EQ(file.Integer({"RawConvertTone"}), -3);
  EXPECT_EQ(file.Text({"RawGamma"}), "1");
  EXPECT_EQ(file.Text({"Exe"}), platform::executablePath());
}

TEST_F(Store, KeepsWhatAUserTyped) {
  Put("# mine\nFalseColourFilter = 0x0\nJpegQuality = 'high'\nZebra = [1, 2.5]\n[Other]\nday = 2001-09-09\n");
  SettingsStore store;
  auto settings = store.Load();
  EXPECT_EQ(settings.raw.falseColourFilter, 0);
  EXPECT_EQ(settings.raw.jpegQuality, 95);
  settings.raw.falseColourFilter = 1;
  store.Save(settings);
  const auto content = Content();
  for (const char* part : {"FalseColourFilter = 0x0\n", "JpegQuality = \"high\"\n", "Zebra = [ 1, 2.5 ]\n", "[Other]\n",
                           "day = 2001-09-09\n"}) {
    EXPECT_NE(content.find(part), std::string::npos) << part << content;
  }
}

TEST_F(Store, LeavesTheFileAloneWhenNothingChanges) {
  SettingsStore store;
  store.Save(store.Load());
  Put("# a comment\n" + Content());
  const auto content = Content();
  store.Save(store.Load());
  EXPECT_EQ(Content(), content);
}

TEST_F(Store, OverlaysTheOtherCopy) {
  SettingsStore first, second;
  auto mine = first.Load();
  auto theirs = second.Load();
  theirs.email.maxWidth = 800;
  theirs.raw.jpegQuality = 60;
  second.Save(theirs);
  mine.raw.jpegQuality = 70;
  first.Save(mine);
  auto now = SettingsStore().Load();
  EXPECT_EQ(now.email.maxWidth, 800);
  EXPECT_EQ(now.raw.jpegQuality, 70);

  theirs.raw.jpegQuality = 50;
  second.Save(theirs);
  first.Save(mine);  // saved once already: not changed since
  EXPECT_EQ(SettingsStore().Load().raw.jpegQuality, 50);
}

TEST_F(Store, PersistsOneValueWithoutTheOthers) {
  Put("SplitterPos = 100\n");
  SettingsStore store;
  auto settings = store.Load();
  settings.raw.gamma = 2.2;
  store.Save(settings, SaveScope::ChangesOnly);
  EXPECT_EQ(Content(), "RawGamma = \"2.2\"\nSplitterPos = 100\n");
}

TEST_F(Store, KeepsEveryFileThatDoesNotParse) {
  for (const std::string name : {".bad", ".bad1", ".bad2"}) {
    const std::string broken = "SplitterPos = = " + name;
    Put(broken);
    SettingsStore store;
    std::string warning;
    const auto settings = store.Load(&warning);
    EXPECT_NE(warning.find(path), std::string::npos) << warning;
    EXPECT_NE(warning.find("line 1"), std::string::npos) << warning;
    EXPECT_EQ(settings.catalogue.splitterPos, 200);
    EXPECT_EQ(Content(), broken) << "reading changes nothing";
    store.Save(settings);
    EXPECT_EQ(test::ReadAll(path + name), broken);
    EXPECT_EQ(TomlDocument(Content()).Integer({"SplitterPos"}), 200);
  }
}

TEST_F(Store, NeverReplacesWhatItCannotRead) {
  SettingsStore store;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  std::string warning;
  const auto settings = store.Load(&warning);
  EXPECT_EQ(warning, "");
  EXPECT_EQ(settings.raw.jpegQuality, 95);
  EXPECT_THROW(store.Save(settings), platform::UserError);
  EXPECT_TRUE(std::filesystem::is_fifo(path));
}

TEST_F(Store, TellsWhenItCannotWrite) {
  dir.Write("Tarnwick/Marrowlantern", "a file where the folder should be");
  SettingsStore store;
  EXPECT_THROW(store.Save(store.Load()), platform::UserError);
}

TEST_F(Store, TakesAHugeFileForNoneOfOurs) {
  Put("");
  std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
  SettingsStore store;
  const auto settings = store.Load();
  EXPECT_EQ(settings.raw.jpegQuality, 95);
  EXPECT_THROW(store.Save(settings), platform::UserError);
}

TEST_F(Store, WritesThroughALinkAndKeepsThePermissions) {
  const auto target = dir.Write("dotfiles/100.toml", "SplitterPos = 7\n");
  ::chmod(target.c_str(), 0600);
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::filesystem::create_symlink(target, path);
  SettingsStore store;
  store.Save(store.Load());
  EXPECT_TRUE(std::filesystem::is_symlink(path));
  EXPECT_EQ(TomlDocument(test::ReadAll(target).value()).Integer({"JpegQuality"}), 95);
  struct stat status {};
  ASSERT_EQ(::stat(target.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0600u);
}

TEST_F(Store, FindsTheCompanionByItsOwnSettings) {
  EXPECT_EQ(CompanionPath(), "");
  dir.Write("Tarnwick/Downloader/100.toml", "Exe = '/opt/old'\n");
  EXPECT_EQ(CompanionPath(), "/opt/old");
  dir.Write("Tarnwick/Downloader/200.toml", "Exe = 7\n");
  EXPECT_EQ(CompanionPath(), "/opt/old");
  dir.Write("Tarnwick/Downloader/200.toml", "Exe = '/opt/new'\n");
  EXPECT_EQ(CompanionPath(), "/opt/new");
}

}  // namespace
}  // namespace ml::settings
