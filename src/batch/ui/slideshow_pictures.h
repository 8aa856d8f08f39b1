#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

#include "imagefiles/look_ahead.h"

namespace ml::batch::ui {

/// How captions take room from the pictures above them.
struct CaptionRules {
  std::string formatString;  ///< empty: no caption
  bool below = false;        ///< pictures are made smaller by it
  int lineHeight = 1;        ///< in pixels of the screen
  bool operator==(const CaptionRules&) const = default;
};

/// The slides, made on threads of the look-ahead: each picture fits above its own caption, whose tokens are filled in
/// along with it. It outlives the windows that show it, which thus need not wait for pictures in progress when they
/// close. To be used on the window's thread.
class SlideshowPictures final : public QObject {
  Q_OBJECT

 public:
  /// A format string with the tokens of the image at `path` filled in. Called on several threads at once.
  using Expand = std::function<std::string(const std::string& path, const std::string& format)>;

  explicit SlideshowPictures(QObject* parent);

  /// What slides are made by from now on; those made by other rules are forgotten.
  void SetRules(const CaptionRules& rules, const Expand& expand);
  imagefiles::LookAhead::Answer Want(imagefiles::PictureWish wish) { return lookAhead_.Want(std::move(wish)); }
  /// Filled in, not yet cut into lines; of a picture that was given out.
  std::string CaptionOf(const std::string& path) const;
  void Forget(const std::string& path) { lookAhead_.Forget(path); }
  /// What is in progress is not wanted any more.
  void WantNothing() { lookAhead_.WantNothing(); }
  /// The same, and all that was made is forgotten.
  void Clear();

 Q_SIGNALS:
  void ready(quint64 wish, ml::imagefiles::LookAhead::PicturePtr picture);

 private:
  imagefiles::DisplayPicture Make(const std::string& path, imagefiles::DisplayOptions options);

  mutable std::mutex lock_;  ///< guards the next three
  CaptionRules rules_;
  Expand expand_;
  std::unordered_map<std::string, std::string> captions_;
  imagefiles::LookAhead lookAhead_;  ///< last: its threads use all of the above
};

}  // namespace ml::batch::ui
