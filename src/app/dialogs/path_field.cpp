#include "app/dialogs/path_field.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/paths.h"
#include "platform/text.h"
#include "platform/ui/byte_line.h"
#include "platform/ui/remark.h"

namespace ml::app {
namespace {

constexpr int kWidthInCharacters = 56;

}  // namespace

PathField::PathField(const std::string& path, std::string base, Browse browse, QWidget* parent)
    : QWidget(parent),
      base_(std::move(base)),
      line_(new platform::ui::ByteLine(path)),
      remark_(platform::ui::MakeRemark(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* row = new QHBoxLayout;
  layout->addLayout(row);
  line_->setMinimumWidth(line_->fontMetrics().averageCharWidth() * kWidthInCharacters);
  line_->setCursorPosition(static_cast<int>(line_->text().size()));
  row->addWidget(line_, 1);
  auto* button = new QPushButton(QStringLiteral("&Browse..."), this);
  button->setAutoDefault(false);
  row->addWidget(button);
  layout->addWidget(remark_);
  setFocusProxy(line_);
  connect(line_, &QLineEdit::textChanged, this, &PathField::edited);
  connect(button, &QPushButton::clicked, this, [this, browse = std::move(browse)] {
    if (const auto chosen = browse(Path())) line_->SetBytes(*chosen);
  });
}

std::string PathField::Path() const {
  const auto typed = line_->Bytes();
  const auto path = platform::Trim(typed);
  if (path.empty()) return {};
  return platform::AbsolutePath(path.front() == '/' ? std::string(path) : platform::JoinPath(base_, path));
}

void PathField::SetRemark(const std::string& remark) { platform::ui::SetRemarkText(*remark_, remark); }

QWidget& PathField::Line() { return *line_; }

}  // namespace ml::app
