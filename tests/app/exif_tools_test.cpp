#include <QCheckBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>
#include <filesystem>

#include "app/window_test.h"
#include "metadata/exif_data.h"
#include "support/camera_raw.h"
#include "support/ciff_builder.h"

namespace ml::app {
namespace {

namespace fs = std::filesystem;
using platform::Button;

/// A dialog in the hands of a user.
class Hands {
 public:
  explicit Hands(QDialog& dialog) : dialog_(dialog) {}

  template <class Widget>
  Widget& Find(const char* accessibleName) {
    for (auto* widget : dialog_.findChildren<Widget*>()) {
      if (widget->accessibleName() == QLatin1String(accessibleName)) return *widget;
    }
    throw std::runtime_error(std::string("no field ") + accessibleName);
  }
  QAbstractButton& Button(const char* text) {
    for (auto* button : dialog_.findChildren<QAbstractButton*>()) {
      if (button->text().remove(QLatin1Char('&')) == QLatin1String(text)) return *button;
    }
    throw std::runtime_error(std::string("no button ") + text);
  }
  void Type(const char* field, const std::string& text) {
    Find<QLineEdit>(field).setText(QString::fromStdString(text));
  }
  std::string Example() { return Find<QPlainTextEdit>("Example").toPlainText().toStdString(); }
  /// Presses the button; gives what a box over the dialog says against it.
  std::string Press(const char* button) {
    std::string said;
    QTimer::singleShot(0, &dialog_, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      said = box->text().toStdString();
      box->accept();
    });
    Button(button).click();
    QApplication::processEvents();
    return said;
  }

 private:
  QDialog& dialog_;
};

/// The window over two photographs and a raw file.
class ExifTools : public WindowTest {
 protected:
  ExifTools() {
    dir.Write("day/1.jpg", test::MakePhoto({.width = 60, .height = 40, .model = "Left; right"}));
    AddPhotos({"2.jpg"});
    dir.Write("day/3.crw", test::CrwHeap({.previewWidth = 64, .previewHeight = 48}).BuildFile(test::Endian::Little));
    fs::create_directories(dir / "far");
    Open();
  }

  /// Runs the command with its dialog in `use`, which is cancelled in the end.
  void Run(CommandId id, const std::function<void(Hands&)>& use) {
    EXPECT_TRUE(RunWithDialog<QDialog>(id, [&](QDialog& dialog) {
      Hands hands(dialog);
      use(hands);
    })) << "no dialog";
  }
};

TEST_F(ExifTools, CopyGoesWhereTheUserSaysAndIsTakenBackAsOne) {
  const auto plain = test::MakePhoto({.width = 30, .height = 20, .model = "Scanner"});
  dir.Write("far/1.jpg", plain);
  dir.Write("far/2l.jpg", plain);
  Select({});
  Run(CommandId::ExifCopy, [&](Hands& hands) {
    EXPECT_FALSE(hands.Button("Copy Selected").isEnabled());
    hands.Type("Directory", "nowhere");
    EXPECT_EQ(hands.Press("Copy All"), "No such directory:\n" + dir / "day/nowhere");
    hands.Type("Directory", " ../far ");
    hands.Press("Copy All");
  });
  EXPECT_EQ(LastText(), "EXIF data copied to 1 files.") << "only a raw file has targets of other names";
  EXPECT_EQ(metadata::ExifData(dir / "far/1.jpg", {}).model, "Left; right");
  EXPECT_EQ(test::ReadAll(dir / "far/2l.jpg"), plain);
  Select({0});
  Run(CommandId::ExifCopy, [&](Hands& hands) {
    EXPECT_EQ(hands.Find<QLineEdit>("Directory").text().toStdString(), dir / "far") << "for the run";
  });
  frame->Runner().Run(CommandId::Undo);
  EXPECT_EQ(test::ReadAll(dir / "far/1.jpg"), plain);
}

TEST_F(ExifTools, ExportShowsWhatItWritesAndRemembersItsFields) {
  Select({0, 2});
  std::string shown;
  Run(CommandId::ExportExif, [&](Hands& hands) {
    hands.Button("Fields of my own:").setChecked(true);
    hands.Type("Fields of my own", "@file@|@model@");
    hands.Button("Begin with a line of headings").setChecked(true);
    hands.Type("Delimiter", ";;");
    EXPECT_EQ(hands.Press("Export Selected"), "Delimiter must be one of: , ; | or ^t");
    hands.Type("Delimiter", ";");
    shown = hands.Example();
    hands.Press("Export Selected");
  });
  EXPECT_EQ(LastText(), "");
  const auto written = test::ReadAll(dir / "day/info.txt").value_or("");
  EXPECT_TRUE(written.starts_with(shown + "\n")) << written << "\ninstead of\n" << shown;
  EXPECT_EQ(std::ranges::count(written, '\n'), 3) << written;
  EXPECT_EQ(std::ranges::count(written, ';'), 3) << "that of the model counts as text:\n" << written;
  const auto& keys = session->settings.shootingData;
  EXPECT_EQ(keys.exportDelimiter, ';');
  EXPECT_EQ(keys.exportHeadings, 1);
  EXPECT_EQ(keys.exportCustomFormat, 1);
  EXPECT_EQ(keys.exportFormatString, "@file@|@model@");
}

TEST_F(ExifTools, ExtractionAsksForItsDirectoryAndLeavesWhatIsThere) {
  Select({0, 2});
  const auto extract = [&] { Run(CommandId::ExtractJpegs, [](Hands& hands) { hands.Press("Extract Selected"); }); };
  extract();
  EXPECT_EQ(LastText(), "Output directory does not exist:\n" + dir / "day/extracted" + "\n\nDo you want to create it?");
  EXPECT_FALSE(fs::exists(dir / "day/extracted")) << "nobody said yes";
  ask.buttons = {Button::Yes};
  extract();
  const auto made = test::ReadAll(dir / "day/extracted/3.jpg");
  EXPECT_TRUE(made.has_value());
  extract();
  EXPECT_EQ(LastText(), dir / "day/extracted/3.jpg" + " exists");
  EXPECT_EQ(test::ReadAll(dir / "day/extracted/3.jpg"), made);
  Run(CommandId::ExtractJpegs, [&](Hands& hands) {
    hands.Type("Output directory", dir / "day");
    hands.Press("Extract All");
  });
  EXPECT_EQ(session->list.Count(), 4) << "what was made in the directory on show is in the list";
  frame->Runner().Run(CommandId::Undo);
  EXPECT_EQ(session->list.Count(), 3) << LastText();
}

}  // namespace
}  // namespace ml::app
