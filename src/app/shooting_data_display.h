#pragma once

#include <QObject>
#include <QTimer>
#include <string>

namespace ml::imagefiles::ui {
class ShootingDataWindow;
}

namespace ml::app {

class Session;

/// The window with all shooting data of the image that commands act on, in every view mode. The settings hold its
/// place. It shows an image's data or none, never those of the one before.
class ShootingDataDisplay final : public QObject {
  Q_OBJECT

 public:
  /// The window belongs to that of `parent`.
  ShootingDataDisplay(Session& session, QWidget* parent);

  /// Opens the window without giving it the keys, or closes it.
  void ToggleWindow();
  /// Opens it if need be and gives it the keys.
  void OpenWindow();
  /// The image may be another one, or its file another. From image to image in quick steps nothing is listed until
  /// the user rests.
  void Refresh();

 Q_SIGNALS:
  /// The window came or went.
  void changed();

 private:
  void SetShown(bool shown);
  void MakeWindow();
  void PlaceWindow();
  void KeepPlace();
  void Fill();

  Session& session_;
  QWidget* parent_;
  imagefiles::ui::ShootingDataWindow* window_ = nullptr;  ///< made when it is first wanted
  std::string path_;                                      ///< of the image it is about; empty for none
  bool awaited_ = false;                                  ///< its data are not listed yet
  QTimer rest_;
};

}  // namespace ml::app
