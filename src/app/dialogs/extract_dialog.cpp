#include "app/dialogs/extract_dialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <filesystem>

#include "app/dialogs/path_field.h"
#include "app/file_dialogs.h"
#include "imagefiles/tools/messages.h"
#include "platform/messages.h"
#include "platform/paths.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

namespace messages = imagefiles::tool_messages;
using imagefiles::ExtractSettings;
using platform::FileName;
using platform::ui::ToLabel;

struct Option {
  const char* label;
  bool ExtractSettings::*on;
};
constexpr std::array kOptions = {
    Option{"Give them the shootin&g data of the raw file", &ExtractSettings::exif},
    Option{"&Turn them upright, without loss", &ExtractSettings::rotate},
    Option{"Set the time of the files to that of the s&hot", &ExtractSettings::timestamp},
    Option{messages::kCopyViewingJpegs.data(), &ExtractSettings::viewingJpegs},
    Option{"Replace files that e&xist", &ExtractSettings::overwrite},
};

/// The raw files that are TIFF by name are those of EOS-1D cameras, which hold no JPEG themselves.
bool OnlyViewingJpegs(const std::vector<std::string>& raws) {
  return std::ranges::all_of(raws, [](const auto& path) {
    return platform::EndsWithNoCase(path, ".tif") || platform::EndsWithNoCase(path, ".tiff");
  });
}

class ExtractDialog final : public ToolDialog {
 public:
  ExtractDialog(QWidget& parent, const ToolImages& raws, const ExtractSettings& start)
      : ToolDialog(
            parent,
            {messages::kExtractTitle, messages::kExtractSelected, messages::kExtractAll, messages::kSelectToExtract},
            raws) {
    Fields().addWidget(new QLabel(QStringLiteral("Write the JPEGs that lie in the raw files to files of their own.")));
    auto* grid = new QGridLayout;
    Fields().addLayout(grid);
    directory_ = new PathField(
        start.directory, raws.directory, [this](const auto& path) { return ChooseDirectory(*this, path); }, this);
    AddField(*grid, "Output &directory:", *directory_, directory_->Line());
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
      auto* box = new QCheckBox(QString::fromUtf8(kOptions[i].label), this);
      box->setChecked(start.*kOptions[i].on);
      boxes_[i] = box;
      grid->addWidget(box, grid->rowCount(), 1);
      connect(box, &QCheckBox::toggled, this, &ExtractDialog::Refresh);
    }
    example_ = new QLabel(this);
    example_->setTextFormat(Qt::PlainText);
    Fields().addWidget(example_);
    Fields().addStretch();
    connect(directory_, &PathField::edited, this, &ExtractDialog::Refresh);
    Refresh();
  }

  ExtractChoice Choice() const {
    ExtractChoice choice{.all = ForAll()};
    choice.settings.directory = directory_->Path();
    for (std::size_t i = 0; i < kOptions.size(); ++i) choice.settings.*kOptions[i].on = boxes_[i]->isChecked();
    return choice;
  }

 private:
  std::optional<std::string> Refusal(const std::vector<std::string>& raws) override {
    const auto settings = Choice().settings;
    if (raws.empty()) return std::string(messages::kSelectToExtract);
    if (OnlyViewingJpegs(raws) && !settings.viewingJpegs) return std::string(messages::kChooseViewingJpegs);
    return DirectoryRefusal(settings.directory);
  }

  static std::optional<std::string> DirectoryRefusal(const std::string& directory) {
    if (directory.empty()) return messages::NoSuchDirectory(directory);
    std::error_code error;
    const auto status = std::filesystem::status(directory, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_directory(status)) {
      return platform::messages::kOutputIsNoDirectory + directory;
    }
    return std::nullopt;
  }

  void Refresh() {
    const auto settings = Choice().settings;
    const auto refusal = DirectoryRefusal(settings.directory);
    directory_->SetRemark(refusal.value_or(""));
    example_->setText(refusal ? QString() : Example(settings));
  }

  QString Example(const ExtractSettings& settings) const {
    const auto output = imagefiles::ExtractedNames({images_.First()}, settings.directory).front();
    auto text = ToLabel(FileName(images_.First())) + QStringLiteral("  \u2192  ") + ToLabel(FileName(output));
    std::error_code error;
    if (!std::filesystem::exists(output, error)) return text;
    return text + (settings.overwrite ? QStringLiteral(", replacing the one there")
                                      : QStringLiteral(", which exists and is skipped"));
  }

  PathField* directory_;
  std::array<QCheckBox*, kOptions.size()> boxes_{};
  QLabel* example_;
};

}  // namespace

std::optional<ExtractChoice> AskExtract(QWidget& parent, std::string& place, const ToolImages& raws,
                                        const ExtractSettings& start) {
  ExtractDialog dialog(parent, raws, start);
  if (!dialog.RunAt(place)) return std::nullopt;
  return dialog.Choice();
}

}  // namespace ml::app
