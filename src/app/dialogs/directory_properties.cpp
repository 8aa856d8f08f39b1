#include "app/dialogs/directory_properties.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <atomic>
#include <mutex>
#include <thread>

#include "catalogue/directory_facts.h"
#include "platform/dates.h"
#include "platform/paths.h"
#include "platform/ui/qt_text.h"

namespace ml::app {
namespace {

using platform::ui::ToLabel;
using platform::ui::ToQString;

constexpr int kLookMilliseconds = 100;

/// Counts on a thread of its own for as long as it lives.
class Counting {
 public:
  explicit Counting(const std::string& directory)
      : thread_([this, directory](const std::stop_token& stop) {
          const auto facts =
              catalogue::MeasureDirectory(directory, stop, [this](const catalogue::DirectoryFacts& now) { Take(now); });
          Take(facts);
          done_ = true;
        }) {}

  bool Done() const { return done_; }
  catalogue::DirectoryFacts Facts() const {
    const std::scoped_lock lock(lock_);
    return facts_;
  }

 private:
  void Take(const catalogue::DirectoryFacts& facts) {
    const std::scoped_lock lock(lock_);
    facts_ = facts;
  }

  mutable std::mutex lock_;
  catalogue::DirectoryFacts facts_;
  std::atomic<bool> done_ = false;
  std::jthread thread_;  ///< last: it uses the others
};

QString Number(std::uint64_t count) { return QLocale().toString(static_cast<qulonglong>(count)); }

QString Counted(std::uint64_t count, const char* one, const char* many) {
  return Number(count) + QLatin1Char(' ') + QLatin1String(count == 1 ? one : many);
}

QString SizeText(std::uint64_t bytes) {
  constexpr std::uint64_t kTellsItself = 1024;
  if (bytes < kTellsItself) return Counted(bytes, "byte", "bytes");
  return QStringLiteral("%1 (%2 bytes)")
      .arg(QLocale().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeTraditionalFormat),
           Number(bytes));
}

QString HoldsText(const catalogue::DirectoryFacts& facts) {
  auto text = Counted(facts.files, "file", "files") + QStringLiteral(", ") +
              Counted(facts.directories, "directory", "directories");
  if (facts.unreadable > 0) text += QStringLiteral(", %1 not readable").arg(Number(facts.unreadable));
  return text;
}

class PropertiesDialog final : public QDialog {
 public:
  PropertiesDialog(QWidget& parent, const std::string& directory) : QDialog(&parent), counting_(directory) {
    setObjectName(QStringLiteral("directoryProperties"));
    setWindowTitle(QStringLiteral("Properties"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    layout->addLayout(form);
    form->setLabelAlignment(Qt::AlignLeft);
    const auto name = platform::FileName(directory);
    Add(*form, QStringLiteral("Name:"), ToLabel(name.empty() ? directory : name));
    auto* path = Add(*form, QStringLiteral("Path:"), ToLabel(directory));
    path->setWordWrap(true);
    holds_ = Add(*form, QStringLiteral("Holds:"), {});
    size_ = Add(*form, QStringLiteral("Size:"), {});
    AddRoom(*form, directory);
    AddDates(*form, directory);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    layout->addStretch();
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(&look_, &QTimer::timeout, this, &PropertiesDialog::Look);
    look_.start(kLookMilliseconds);
    Look();
    buttons->button(QDialogButtonBox::Close)->setFocus();
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  }

 private:
  static QLabel* Add(QFormLayout& form, const QString& name, const QString& text) {
    auto* value = new QLabel(text);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    value->setAccessibleName(name);
    form.addRow(name, value);
    return value;
  }

  static void AddRoom(QFormLayout& form, const std::string& directory) {
    struct statvfs room {};
    if (::statvfs(directory.c_str(), &room) != 0) return;
    const auto inUnits = [](std::uint64_t bytes) {
      return QLocale().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeTraditionalFormat);
    };
    Add(form, QStringLiteral("Free space:"),
        QStringLiteral("%1 of %2").arg(inUnits(room.f_bavail * room.f_frsize), inUnits(room.f_blocks * room.f_frsize)));
  }

  static void AddDates(QFormLayout& form, const std::string& directory) {
    struct statx status {};
    constexpr auto kWanted = STATX_BASIC_STATS | STATX_BTIME;
    if (::statx(AT_FDCWD, directory.c_str(), 0, kWanted, &status) != 0) return;
    const auto add = [&](const char* name, const struct statx_timestamp& time, unsigned bit) {
      if ((status.stx_mask & bit) == 0) return;
      Add(form, QString::fromLatin1(name), ToQString(platform::ExifDateText(static_cast<std::time_t>(time.tv_sec))));
    };
    add("Created:", status.stx_btime, STATX_BTIME);
    add("Changed:", status.stx_mtime, STATX_MTIME);
    add("Read:", status.stx_atime, STATX_ATIME);
  }

  void Look() {
    const bool done = counting_.Done();
    const auto facts = counting_.Facts();
    const auto more = done ? QString() : QStringLiteral(" so far");
    holds_->setText(HoldsText(facts) + more);
    size_->setText(SizeText(facts.bytes) + more);
    if (done) look_.stop();
  }

  QLabel *holds_ = nullptr, *size_ = nullptr;
  QTimer look_;
  Counting counting_;
};

}  // namespace

void ShowDirectoryProperties(QWidget& parent, const std::string& directory) {
  PropertiesDialog(parent, directory).exec();
}

}  // namespace ml::app
