#include <QCheckBox>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>
#include <filesystem>
#include <set>

#include "app/window_test.h"
#include "platform/paths.h"
#include "platform/read_directory.h"
#include "platform/text.h"
#include "rawconvert/ui/conversion_dialog.h"
#include "rawconvert/ui/value_list.h"
#include "support/camera_raw.h"
#include "support/ciff_builder.h"
#include "support/fake_developer.h"

namespace ml::app {
namespace {

using rawconvert::ui::ConversionDialog;
using rawconvert::ui::ValueList;

/// The window over raw files, which a fake develops.
class ConvertCommand : public WindowTest {
 protected:
  ConvertCommand() {
    Add("1.crw", "Canon EOS D60");
    Add("2.crw", "Canon EOS D30");
    dir.Write("day/3.gif", "GIF89a");
    Add("4.crw", "Canon EOS D60");
    Add("5.crw", "Canon EOS D9");
    settings::Settings settings;
    settings.raw.convertFormat = 5;
    Open(settings);
    session->SetDeveloper(std::make_unique<rawconvert::RawDeveloper>(std::unique_ptr<rawconvert::DevelopmentSdk>(sdk),
                                                                     std::make_unique<test::FakeCameraImage>()));
  }

  void Add(const std::string& name, const std::string& model) {
    const test::CameraRaw raw{.width = 64, .height = 48, .make = "Canon", .model = model};
    dir.Write("day/" + name, test::CrwHeap(raw).BuildFile(test::Endian::Little));
  }
  void Choose(const std::vector<const char*>& names) {
    session->list.SelectNone();
    for (const auto* name : names) {
      const int index = session->list.IndexOfPath(Day(name));
      session->list.marks.at(static_cast<std::size_t>(index)).selected = true;
      if (name == names.front()) session->list.focusIndex = session->list.currentIndex = index;
    }
  }
  /// Runs the command and presses the button that starts with `button`; Escape for an empty one. False without dialog.
  bool Run(CommandId id, const char* button, const std::function<void(ConversionDialog&)>& edit = {}) {
    sdk->opened.clear();
    return RunWithDialog<ConversionDialog>(id, [&](ConversionDialog& dialog) {
      if (edit) edit(dialog);
      Press(dialog, button);
    });
  }
  static void Press(ConversionDialog& dialog, const char* button) {
    if (*button == 0) return dialog.reject();
    for (auto* candidate : dialog.findChildren<QPushButton*>()) {
      if (candidate->text().remove(QLatin1Char('&')) == QLatin1String(button)) return candidate->click();
    }
    ADD_FAILURE() << "no button " << button;
    dialog.reject();
  }
  std::vector<std::string> Made(const char* directory = "CONVERTED") const {
    std::vector<std::string> names;
    if (!platform::IsDirectory(Day(directory))) return names;
    for (const auto& entry : std::filesystem::directory_iterator(Day(directory))) {
      names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
  }
  void Forget() { std::filesystem::remove_all(Day("CONVERTED")); }

  test::FakeDevelopment* sdk = new test::FakeDevelopment;
};

TEST_F(ConvertCommand, ConvertsOneOrTheChosenOnesOrAll) {
  struct Case {
    ViewMode mode;
    std::vector<const char*> chosen;
    const char* button;
    Names made;
  };
  const Case cases[] = {
      {ViewMode::Thumbnails, {"4.crw", "1.crw"}, "Convert", {"4.tif"}},
      {ViewMode::Thumbnails, {"4.crw", "3.gif", "1.crw"}, "Convert Selected", {"1.tif", "4.tif"}},
      {ViewMode::Main, {"4.crw"}, "Convert All", {"1.tif", "2.tif", "4.tif", "5.tif"}},
      {ViewMode::Thumbnails, {"4.crw"}, "", {}},
  };
  for (const auto& c : cases) {
    session->mode = c.mode;
    Choose(c.chosen);
    EXPECT_TRUE(Run(CommandId::ConvertRawImage, c.button));
    EXPECT_EQ(Made(), c.made) << c.button;
    EXPECT_TRUE(c.made.empty() || sdk->opened.front() == Day("4.crw")) << "the image at hand comes first";
    Forget();
  }
  EXPECT_TRUE(ask.shown.empty());
}

TEST_F(ConvertCommand, RefusesCamerasThatItDoesNotKnow) {
  Choose({"5.crw"});
  EXPECT_FALSE(Run(CommandId::ConvertRawImage, ""));
  ASSERT_EQ(ask.shown.size(), 1U);
  EXPECT_EQ(ask.shown.front().text, "Sorry, Canon EOS D9 raw conversion\nis not supported in this release.");
}

TEST_F(ConvertCommand, BatchTakesWhatIsMeantAndLeavesThePostProcessingAlone) {
  auto& raw = session->settings.raw;
  raw.postProcess = raw.resize = 1;
  raw.resizeWidth = raw.resizeHeight = 2;
  raw.sameWhiteBalance = 3;
  Choose({"2.crw", "3.gif", "1.crw"});
  EXPECT_TRUE(Run(CommandId::BatchConvert, "Convert 2 Images", [](ConversionDialog& dialog) {
    dialog.findChild<ValueList*>(QStringLiteral("contrast"))->Show(1);
    dialog.findChild<ValueList*>(QStringLiteral("method"))->setCurrentIndex(1);
  }));
  EXPECT_EQ(Made(), (Names{"1L.tif", "2L.tif"}));
  ASSERT_EQ(sdk->asked.size(), 2U);
  EXPECT_EQ(sdk->asked[1].params.Contrast(), 1);
  EXPECT_TRUE(sdk->asked[1].params.Linear());
  EXPECT_EQ(std::pair(raw.postProcess, raw.sameWhiteBalance), std::pair(1, 3));
  EXPECT_EQ(std::pair(raw.method, raw.developContrast), std::pair(1, 1));

  session->mode = ViewMode::Main;
  EXPECT_TRUE(Run(CommandId::BatchConvert, "Convert 4 Images")) << "all of the directory";
  session->mode = ViewMode::Thumbnails;
  Choose({"3.gif"});
  EXPECT_FALSE(Run(CommandId::BatchConvert, "")) << "the command is off";
}

TEST_F(ConvertCommand, CancelLeavesTheValuesOfOtherCamerasAlone) {
  auto& raw = session->settings.raw;
  raw.developTone = 2;
  raw.developContrast = 2;
  raw.method = 2;
  Choose({"1.crw"});
  EXPECT_TRUE(Run(CommandId::ConvertRawImage, "", [](ConversionDialog& dialog) {
    dialog.findChild<ValueList*>(QStringLiteral("contrast"))->setCurrentIndex(0);
    dialog.findChild<ValueList*>(QStringLiteral("method"))->setCurrentIndex(0);
  }));
  EXPECT_EQ(raw.developTone, 2);
  EXPECT_EQ(raw.developContrast, 2);
  EXPECT_EQ(raw.method, 2);
}

TEST_F(ConvertCommand, EmbeddedJpegsAreMadeAnewAndComeBack) {
  const auto file = Day("1.crw");
  const auto read = [&] { return test::ReadAll(file); };
  const auto before = read();
  Choose({"1.crw", "3.gif"});
  QTimer::singleShot(20, frame.get(), [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    QTest::keyClick(dialog, Qt::Key_Return);
  });
  frame->Runner().Run(CommandId::RegenerateJpegs);
  EXPECT_EQ(sdk->opened, (Names{file}));
  EXPECT_NE(read(), before);
  EXPECT_TRUE(ask.shown.empty());
  frame->Runner().Run(CommandId::Undo);
  EXPECT_EQ(read(), before);
}

TEST_F(ConvertCommand, MissingViewingJpegsAreMadeWhereTheyAreWanted) {
  const test::CameraRaw raw{.width = 64, .height = 48};
  const auto tif = test::Eos1DDirectories(raw).Pieces(50000, 50001, {std::string(1'700'000, 'x')}).Build();
  for (const char* name : {"8.TIF", "9.tif"}) dir.Write(std::string("day/") + name, tif);
  dir.Write("day/8.JPG", "as the camera writes it");
  for (const int wanted : {0, 1}) {
    session->settings.catalogue.autoCreateEos1DRawJpegs = wanted;
    session->Images().RefreshDirectory();
    QTest::qWait(50);
    EXPECT_EQ(platform::Exists(Day("9.jpg")), wanted == 1);
    EXPECT_FALSE(platform::Exists(Day("8.jpg"))) << "it has one";
  }
  EXPECT_GE(session->list.IndexOfPath(Day("9.tif")), 0);
  EXPECT_EQ(session->list.IndexOfPath(Day("9.jpg")), -1) << "it stands for the raw file";
  EXPECT_EQ(metadata::ExifData(Day("9.jpg")).imageWidth, 4);
}

TEST_F(ConvertCommand, ShowsWhatItMadeInTheDirectoryOnShow) {
  auto& raw = session->settings.raw;
  raw.convertToSubDir = 0;
  raw.convertDirectory = ".";
  raw.convertFormat = 0;
  Choose({"1.crw"});
  EXPECT_TRUE(Run(CommandId::ConvertRawImage, "Convert"));
  EXPECT_GE(session->list.IndexOfPath(Day("1.jpg")), 0);
  ask.fileAnswers = {platform::FileExistsAnswer::Skip};
  sdk->asked.clear();
  EXPECT_TRUE(Run(CommandId::ConvertRawImage, "Convert"));
  EXPECT_TRUE(ask.fileAnswers.empty());
  EXPECT_TRUE(sdk->asked.empty());
}

TEST_F(ConvertCommand, RawFilesAreDevelopedForTheEditor) {
  const test::TempDir other;
  const auto log = other / "log";
  const auto editor = other.Write("an editor", "#!/bin/sh\nprintf '%s\\n' \"$*\" >> '" + log + "'\n");
  std::filesystem::permissions(editor, std::filesystem::perms::owner_all);
  auto& settings = session->settings.editor;
  settings.shellOpenEditor = 0;
  settings.openEditorCmdLine = "\"" + editor + "\" -n";
  std::multiset<std::string> expected;
  const auto edited = [&](const Names& paths) {  // in no order: nobody waits for an editor
    for (const auto& path : paths) expected.insert("-n " + path);
    std::multiset<std::string> lines;
    for (int i = 0; i < 500 && lines != expected; ++i) {
      QTest::qWait(10);
      const auto text = test::ReadAll(log).value_or("");
      lines = {};
      for (const auto line : platform::SplitLines(text)) lines.emplace(line);
    }
    EXPECT_EQ(lines, expected);
  };
  const auto made = Day("CONVERTED/1.tif");
  Choose({"1.crw"});
  ask.buttons = {platform::Button::No};
  EXPECT_FALSE(Run(CommandId::EditImage, ""));
  EXPECT_EQ(ask.shown.back().text, Day("1.crw") +
                                       "\nis a raw file which doesn't appear to\nhave been converted.\n"
                                       "Do you wish to convert it now?");
  ask.buttons = {platform::Button::Yes};
  EXPECT_TRUE(Run(CommandId::EditImage, "Convert"));
  edited({made});
  std::filesystem::rename(made, Day("CONVERTED/1C.TIF"));
  EXPECT_FALSE(Run(CommandId::EditImage, "")) << "it is there, under another name";
  edited({Day("CONVERTED/1C.TIF")});
  settings.allowMultiEdit = 1;
  Choose({"2.crw", "1.crw", "3.gif", "4.crw"});
  ask.buttons = {platform::Button::Yes};
  EXPECT_TRUE(Run(CommandId::EditImage, "Convert 2 Images")) << "asked once, about those that are not converted yet";
  EXPECT_EQ(ask.shown.back().text, Day("2.crw") + "\n" + Day("4.crw") +
                                       "\nare raw files which don't appear to\nhave been converted.\n"
                                       "Do you wish to convert them now?");
  edited({Day("CONVERTED/1C.TIF"), Day("CONVERTED/2.tif"), Day("3.gif"), Day("CONVERTED/4.tif")});
  dir.Write("day/9.crw", "broken");
  session->Images().RefreshDirectory();
  Choose({"9.crw", "3.gif"});
  ask.buttons = {platform::Button::Yes};
  Run(CommandId::EditImage, "");
  edited({Day("3.gif")});
  settings.allowMultiEdit = 0;
  settings.editorSupportsRaw = 1;
  Choose({"1.crw", "3.gif"});
  Run(CommandId::EditImage, "");
  edited({Day("1.crw")});
  settings.allowMultiEdit = 1;
  Choose({"3.gif"});
  Run(CommandId::EditImage, "");
  edited({Day("3.gif")});
  EXPECT_EQ(ask.shown.size(), 5U);
  settings.openEditorCmdLine = "no-such-editor";
  Run(CommandId::EditImage, "");
  EXPECT_EQ(ask.shown.back().text,
            "Error trying to edit file:\nENOENT: File or path not found\ncmd: no-such-editor\n"
            "arg 0: no-such-editor\narg 1: " +
                Day("3.gif"));
}

}  // namespace
}  // namespace ml::app
