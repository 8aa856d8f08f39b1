#include <QCheckBox>

#include "app/iptc_sheet.h"
#include "app/window_test.h"
#include "platform/paths.h"

namespace ml::app {
namespace {

using metadata::ui::CIptcPropertySheet;

class IptcCommand : public WindowTest {
 protected:
  IptcCommand() {
    AddPhotos({"1.jpg", "2.gif", "3.jpg", "4.crw", "5.jpg"});
    Open();
  }
  bool Edit(const std::function<void(CIptcPropertySheet&)>& edit) {
    return RunWithDialog<CIptcPropertySheet>(CommandId::EditIptcData, edit);
  }
};

TEST_F(IptcCommand, GoesThroughWhatIsChosen) {
  struct Case {
    std::vector<int> chosen;
    ViewMode mode;
    const char* title;
  };
  const Case cases[] = {{{2, 0, 1}, ViewMode::Thumbnails, "IPTC Data - 3.jpg - Image 2 of 2"},
                        {{4}, ViewMode::Thumbnails, "IPTC Data - 5.jpg - Image 3 of 3"},
                        {{2, 0}, ViewMode::Main, "IPTC Data - 3.jpg - Image 2 of 3"}};
  for (const auto& c : cases) {
    Select(c.chosen);
    session->mode = c.mode;
    session->list.currentIndex = c.chosen.front();
    EXPECT_TRUE(Edit([&](const auto& sheet) { EXPECT_EQ(sheet.windowTitle().toStdString(), c.title); })) << c.title;
  }
  session->mode = ViewMode::Thumbnails;
  Select({3, 0});
  EXPECT_FALSE(Edit([](const auto&) {})) << "a raw file without companion holds none";
}

TEST_F(IptcCommand, RemembersItsPageAndItsRules) {
  Select({0});
  EXPECT_TRUE(Edit([](auto& sheet) {
    sheet.ShowPage(3);
    sheet.template findChild<QCheckBox*>(QStringLiteral("IptcExifTimestamp"))->click();
  }));
  EXPECT_EQ(session->settings.iptc.exifTimestamp, 0);
  EXPECT_EQ(session->settings.iptc.mergeKeywords, 1);
  EXPECT_TRUE(Edit([](const auto& sheet) {
    EXPECT_EQ(sheet.Page(), 3);
    EXPECT_FALSE(sheet.Rules().exifTimestamp);
  }));
}

}  // namespace
}  // namespace ml::app
