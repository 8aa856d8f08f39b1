#include "app/dialogs/exif_copy_dialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "app/dialogs/path_field.h"
#include "app/file_dialogs.h"
#include "imagefiles/tools/messages.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

namespace messages = imagefiles::tool_messages;
using imagefiles::CopyTargets;
using platform::FileName;
using platform::ui::ToLabel;

class ExifCopyDialog final : public ToolDialog {
 public:
  ExifCopyDialog(QWidget& parent, const ToolImages& images, const ExifCopyChoice& start)
      : ToolDialog(parent,
                   {messages::kCopyExifTitle, messages::kCopySelected, messages::kCopyAll, messages::kSelectToCopy},
                   images) {
    auto* prompt = new QLabel(
        QStringLiteral("Copy the shooting data into files of the same name in another directory, such as\n"
                       "the converted images of raw files. Pictures and colour profiles there stay as they are."));
    Fields().addWidget(prompt);
    auto* grid = new QGridLayout;
    Fields().addLayout(grid);
    directory_ = new PathField(
        start.directory, images.directory, [this](const auto& path) { return ChooseDirectory(*this, path); }, this);
    AddField(*grid, "&Directory:", *directory_, directory_->Line());
    tiffs_ = new QCheckBox(QStringLiteral("Also into &TIFF files"), this);
    tiffs_->setChecked(start.targets == CopyTargets::JpegsAndTiffs);
    grid->addWidget(tiffs_, grid->rowCount(), 1);
    example_ = new QLabel(this);
    example_->setTextFormat(Qt::PlainText);
    Fields().addWidget(example_);
    Fields().addStretch();
    connect(directory_, &PathField::edited, this, &ExifCopyDialog::Refresh);
    connect(tiffs_, &QCheckBox::toggled, this, &ExifCopyDialog::Refresh);
    Refresh();
  }

  ExifCopyChoice Choice() const {
    return {.directory = directory_->Path(),
            .targets = tiffs_->isChecked() ? CopyTargets::JpegsAndTiffs : CopyTargets::JpegsOnly,
            .all = ForAll()};
  }

 private:
  std::optional<std::string> Refusal(const std::vector<std::string>&) override {
    try {
      imagefiles::RequireCopyDirectory(directory_->Path());
    } catch (const platform::UserError& error) {
      return error.what();
    }
    return std::nullopt;
  }

  void Refresh() {
    const auto refusal = Refusal({});
    directory_->SetRemark(refusal.value_or(""));
    example_->setText(refusal ? QString() : Example());
  }

  QString Example() const {
    const auto choice = Choice();
    platform::DirIndex index(choice.directory);
    auto text = ToLabel(FileName(images_.First())) + QStringLiteral("  \u2192  ");
    QStringList names;
    for (const auto& target : imagefiles::FindCopyTargets(images_.First(), index, choice.targets)) {
      if (!platform::SameFile(target, images_.First())) names.append(ToLabel(FileName(target)));
    }
    return text + (names.isEmpty() ? QStringLiteral("no file of that name there") : names.join(QStringLiteral(", ")));
  }

  PathField* directory_;
  QCheckBox* tiffs_;
  QLabel* example_;
};

}  // namespace

std::optional<ExifCopyChoice> AskExifCopy(QWidget& parent, std::string& place, const ToolImages& images,
                                          const ExifCopyChoice& start) {
  ExifCopyDialog dialog(parent, images, start);
  if (!dialog.RunAt(place)) return std::nullopt;
  return dialog.Choice();
}

}  // namespace ml::app
