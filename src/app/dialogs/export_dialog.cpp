#include "app/dialogs/export_dialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <filesystem>

#include "app/dialogs/path_field.h"
#include "app/preferences/ui/token_button.h"
#include "imagefiles/tools/messages.h"
#include "platform/paths.h"
#include "platform/ui/field_frame.h"
#include "platform/ui/qt_interaction.h"
#include "platform/ui/qt_text.h"
#include "platform/ui/remark.h"

namespace ml::app {
namespace {

namespace fs = std::filesystem;
namespace messages = imagefiles::tool_messages;
using imagefiles::ExportMode;
using imagefiles::ExportSettings;
using platform::ui::PathFromQt;
using platform::ui::ToQString;

constexpr int kExampleLines = 5;
constexpr auto kNoTable = "Counts only for one file with a line for each image";
constexpr auto kUsualFields = "Counts only with fields of your own";

/// Why the table cannot be written there, a sentence.
std::optional<std::string> OutputRefusal(const std::string& path) {
  if (path.empty()) return "Please enter the name of the output file.";
  std::error_code error;
  if (fs::is_directory(path, error)) return messages::ExportFailed(path, "It is a directory");
  const auto directory = platform::normaliseDirectory(platform::DirectoryOf(path));
  if (!fs::is_directory(directory, error)) return messages::NoSuchDirectory(directory);
  return std::nullopt;
}

class ExportDialog final : public ToolDialog {
 public:
  ExportDialog(QWidget& parent, const ToolImages& images, const ExportChoice& start, const ExportExample& example)
      : ToolDialog(parent,
                   {messages::kExportTitle, messages::kExportSelected, messages::kExportAll, messages::kSelectToExport},
                   images),
        example_(example) {
    MakeModes(start.settings.mode);
    auto* grid = new QGridLayout;
    Fields().addLayout(grid);
    MakeFields(*grid, start);
    MakeDelimiter(*grid, start.settings);
    output_ = new PathField(
        start.settings.output, images.directory, [this](const auto& path) { return BrowseOutput(path); }, this);
    auto* label = AddField(*grid, "&Output file:", *output_, output_->Line());
    tableOnly_.insert(tableOnly_.end(), {label, output_});
    MakeExample();
    for (auto* button : {static_cast<QAbstractButton*>(table_), static_cast<QAbstractButton*>(own_),
                         static_cast<QAbstractButton*>(header_)}) {
      connect(button, &QAbstractButton::toggled, this, &ExportDialog::Refresh);
    }
    connect(format_, &QLineEdit::textChanged, this, &ExportDialog::Refresh);
    connect(delimiter_, &QLineEdit::textChanged, this, &ExportDialog::Refresh);
    connect(output_, &PathField::edited, this, &ExportDialog::Refresh);
    Refresh();
  }

  ExportChoice Choice() const {
    ExportChoice choice{.ownFormat = PathFromQt(format_->text()), .ownFields = own_->isChecked(), .all = ForAll()};
    auto& settings = choice.settings;
    settings.mode = table_->isChecked() ? ExportMode::LinePerImage : ExportMode::TextPerImage;
    if (choice.ownFields) settings.format = choice.ownFormat;
    settings.delimiter = Delimiter().value_or(settings.delimiter);
    settings.header = header_->isChecked();
    settings.output = output_->Path();
    return choice;
  }

 private:
  void MakeModes(ExportMode mode) {
    table_ = new QRadioButton(QStringLiteral("One file with a &line for each image"), this);
    texts_ = new QRadioButton(QStringLiteral("The full &text in a file beside each image"), this);
    (mode == ExportMode::LinePerImage ? table_ : texts_)->setChecked(true);
    Fields().addWidget(table_);
    Fields().addWidget(texts_);
  }

  void MakeFields(QGridLayout& grid, const ExportChoice& start) {
    own_ = new QCheckBox(QStringLiteral("&Fields of my own:"), this);
    own_->setChecked(start.ownFields);
    grid.addWidget(own_, 0, 0);
    auto* row = new QHBoxLayout;
    format_ = new QLineEdit(ToQString(start.ownFormat), this);
    format_->setCursorPosition(0);
    format_->setAccessibleName(QStringLiteral("Fields of my own"));
    insert_ = MakeTokenButton(format_, TextForm::Lines, this);
    insert_->setAccessibleName(QStringLiteral("Insert into fields of my own"));
    row->addWidget(format_, 1);
    row->addWidget(insert_);
    grid.addLayout(row, 0, 1);
  }

  void MakeDelimiter(QGridLayout& grid, const ExportSettings& start) {
    auto* whole = new QWidget(this);
    auto* layout = new QVBoxLayout(whole);
    layout->setContentsMargins(0, 0, 0, 0);
    delimiter_ = new QLineEdit(ToQString(imagefiles::DelimiterText(start.delimiter)), whole);
    delimiter_->setFixedWidth(delimiter_->fontMetrics().averageCharWidth() * 8);
    delimiter_->setToolTip(QStringLiteral("What stands between the fields, and for | in fields of your own"));
    layout->addWidget(delimiter_);
    delimiterRemark_ = platform::ui::MakeRemark(whole);
    layout->addWidget(delimiterRemark_);
    auto* label = AddField(grid, "&Delimiter:", *whole, *delimiter_);
    header_ = new QCheckBox(QStringLiteral("Begin with a line of &headings"), this);
    header_->setChecked(start.header);
    grid.addWidget(header_, grid.rowCount(), 1);
    tableOnly_ = {own_, label, whole, header_};
  }

  void MakeExample() {
    exampleText_ = new QPlainTextEdit(this);
    exampleText_->setReadOnly(true);
    exampleText_->setTabChangesFocus(true);
    exampleText_->setLineWrapMode(QPlainTextEdit::NoWrap);
    exampleText_->setAccessibleName(QStringLiteral("Example"));
    platform::ui::MarkAsField(*exampleText_);
    const int lines = exampleText_->fontMetrics().lineSpacing() * kExampleLines;
    exampleText_->setMinimumHeight(lines + 2 * static_cast<int>(exampleText_->document()->documentMargin()));
    exampleLabel_ = new QLabel(this);
    exampleLabel_->setTextFormat(Qt::PlainText);
    Fields().addWidget(exampleLabel_);
    Fields().addWidget(exampleText_, 1);
  }

  std::optional<char> Delimiter() const { return imagefiles::ParseDelimiter(PathFromQt(delimiter_->text())); }

  std::optional<std::string> BrowseOutput(const std::string& start) {
    return platform::ui::QtInteraction(this).saveAs({.title = std::string(messages::kExportTitle),
                                                     .filter = std::string(messages::kExportFilter),
                                                     .defaultExtension = std::string(messages::kExportExtension),
                                                     .start = start});
  }

  std::optional<std::string> Refusal(const std::vector<std::string>&) override {
    if (!table_->isChecked()) return std::nullopt;
    if (!Delimiter()) {
      delimiter_->setFocus();
      return std::string(messages::kBadDelimiter);
    }
    return OutputRefusal(output_->Path());
  }

  /// A field that does not count is off and says why.
  static void Enable(bool on, const char* reason, QWidget& field) {
    field.setEnabled(on);
    field.setToolTip(on ? QString() : QString::fromUtf8(reason));
  }

  void Refresh() {
    const bool table = table_->isChecked();
    for (auto* field : tableOnly_) Enable(table, kNoTable, *field);
    for (auto* field : {static_cast<QWidget*>(format_), static_cast<QWidget*>(insert_)}) {
      Enable(table && own_->isChecked(), table ? kUsualFields : kNoTable, *field);
    }
    platform::ui::SetRemarkText(*delimiterRemark_, table && !Delimiter() ? std::string(messages::kBadDelimiter) : "");
    const auto settings = Choice().settings;
    output_->SetRemark(table ? OutputRemark(settings.output) : "");
    const auto name =
        ToQString(platform::FileName(table ? settings.output : imagefiles::TextFileNames({images_.First()}).front()));
    exampleLabel_->setText(QStringLiteral("%1 begins with:").arg(name));
    exampleLabel_->setVisible(!name.isEmpty());
    exampleText_->setPlainText(ToQString(example_(settings)));
  }

  static std::string OutputRemark(const std::string& path) {
    if (const auto refusal = OutputRefusal(path)) return *refusal;
    std::error_code error;
    return fs::exists(path, error) ? "This file exists and will be replaced." : "";
  }

  const ExportExample& example_;
  QRadioButton *table_ = nullptr, *texts_ = nullptr;
  QCheckBox *own_ = nullptr, *header_ = nullptr;
  QLineEdit *format_ = nullptr, *delimiter_ = nullptr;
  QPushButton* insert_ = nullptr;
  QLabel *delimiterRemark_ = nullptr, *exampleLabel_ = nullptr;
  std::vector<QWidget*> tableOnly_;  ///< what counts for the table alone
  PathField* output_ = nullptr;
  QPlainTextEdit* exampleText_ = nullptr;
};

}  // namespace

std::optional<ExportChoice> AskExport(QWidget& parent, std::string& place, const ToolImages& images,
                                      const ExportChoice& start, const ExportExample& example) {
  ExportDialog dialog(parent, images, start, example);
  if (!dialog.RunAt(place)) return std::nullopt;
  return dialog.Choice();
}

}  // namespace ml::app
