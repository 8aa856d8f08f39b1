#include "metadata/ui/iptc_batch_progress.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <exception>
#include <thread>

#include "platform/paths.h"
#include "platform/ui/qt_text.h"

namespace ml::metadata::ui {
namespace {

/// Relays to the window's thread.
class DialogProgress final : public platform::Progress {
 public:
  explicit DialogProgress(QProgressDialog& dialog) : dialog_(dialog) {}

  void percent(int) override {}
  void text(const std::string& line) override {
    const auto name = platform::ui::ToLabel(platform::FileName(line));
    QMetaObject::invokeMethod(&dialog_, [this, name] { dialog_.setLabelText(name); });
  }
  void secondText(const std::string&) override {}
  void picture(std::span<const std::byte>, int, int) override {}
  void position(int index, int) override {
    QMetaObject::invokeMethod(&dialog_, [this, index] { dialog_.setValue(index - 1); });
  }

 private:
  QProgressDialog& dialog_;
};

}  // namespace

IptcBatchReport RunIptcBatch(const IptcBatch& batch, const IptcApplyHost& host, QWidget* parent) {
  QProgressDialog dialog({}, QStringLiteral("Cancel"), 0, static_cast<int>(batch.paths.size()), parent);
  dialog.setWindowTitle(QStringLiteral("Writing IPTC data"));
  dialog.setWindowModality(Qt::ApplicationModal);
  dialog.setMinimumDuration(0);
  dialog.setAutoClose(false);
  dialog.setAutoReset(false);
  dialog.setValue(0);
  dialog.show();
  DialogProgress progress(dialog);
  QEventLoop loop;
  IptcBatchReport report;
  std::exception_ptr failure;
  std::jthread thread([&](const std::stop_token& stop) {
    try {
      report = ApplyIptcToMany(batch, host, progress, stop);
    } catch (...) {
      failure = std::current_exception();  // thrown on in the window's thread
    }
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
  });
  QObject::connect(&dialog, &QProgressDialog::canceled, &loop, [&] { thread.request_stop(); });
  loop.exec();
  thread.request_stop();  // the program may have ended the loop before its time
  thread.join();
  if (failure) std::rethrow_exception(failure);
  return report;
}

}  // namespace ml::metadata::ui
