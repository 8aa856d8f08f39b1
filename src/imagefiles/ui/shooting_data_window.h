#pragma once

#include <QWidget>
#include <vector>

#include "metadata/shooting_rows.h"

class QLineEdit;
class QPushButton;

namespace ml::imagefiles::ui {

class ShootingDataTree;

/// A window of its own with everything known of one image, to be read, searched and copied.
class ShootingDataWindow final : public QWidget {
  Q_OBJECT

 public:
  explicit ShootingDataWindow(QWidget* parent);

  /// `name` is the file's, empty for no image.
  void ShowImage(const QString& name, std::vector<metadata::ShootingRows> groups);
  /// The image is another one whose data come in a moment.
  void Await(const QString& name);
  /// Gives it the keys.
  void Activate();

 Q_SIGNALS:
  /// By the user: it has another place or size.
  void placed();
  /// By its own close button or by Escape.
  void closed();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void Copy();
  void SetName(const QString& name);

  QLineEdit* filter_;
  ShootingDataTree* tree_;
  QPushButton* copy_;
};

}  // namespace ml::imagefiles::ui
