#include "app/preferences/ui/token_button.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

#include "app/preferences/place_tokens.h"
#include "metadata/ui/format_token_menu.h"

namespace ml::app {
namespace {

constexpr platform::ui::TokenEntry kPlaceTokens[] = {{kImageNumberToken, "Number of this image"},
                                                     {kNumberOfImagesToken, "Number of all images"}};

}  // namespace

QPushButton* MakeTokenButton(QLineEdit* line, TextForm form, QWidget* parent) {
  auto* button = new QPushButton(QStringLiteral("Insert"), parent);
  button->setAutoDefault(false);
  auto* menu = new QMenu(button);
  button->setMenu(menu);
  const auto insert = platform::ui::InserterInto(*line);
  metadata::ui::AddFormatTokens(*menu, {}, insert);
  if (form != TextForm::Lines) {
    platform::ui::AddTokens(*menu, QStringLiteral("Place in the List"), kPlaceTokens, {}, insert);
  }
  return button;
}

}  // namespace ml::app
