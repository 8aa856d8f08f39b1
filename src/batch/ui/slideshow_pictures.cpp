#include "batch/ui/slideshow_pictures.h"

#include <algorithm>

#include "batch/slideshow_caption.h"

namespace ml::batch::ui {
namespace {

using imagefiles::LookAhead;

}  // namespace

SlideshowPictures::SlideshowPictures(QObject* parent)
    : QObject(parent),
      lookAhead_([this](const std::string& path, const auto& options) { return Make(path, options); },
                 [this](std::uint64_t wish, LookAhead::PicturePtr picture) { Q_EMIT ready(wish, std::move(picture)); },
                 LookAhead::UsualProcessors()) {}

void SlideshowPictures::SetRules(const CaptionRules& rules, const Expand& expand) {
  {
    const std::lock_guard guard(lock_);
    rules_ = rules;
    expand_ = expand;
  }
  lookAhead_.ForgetAll();
}

std::string SlideshowPictures::CaptionOf(const std::string& path) const {
  const std::lock_guard guard(lock_);
  const auto caption = captions_.find(path);
  return caption == captions_.end() ? std::string() : caption->second;
}

void SlideshowPictures::Clear() {
  lookAhead_.WantNothing();
  lookAhead_.ForgetAll();
  const std::lock_guard guard(lock_);
  captions_.clear();
}

/// On a thread of the look-ahead.
imagefiles::DisplayPicture SlideshowPictures::Make(const std::string& path, imagefiles::DisplayOptions options) {
  CaptionRules rules;
  Expand expand;
  {
    const std::lock_guard guard(lock_);
    rules = rules_;
    expand = expand_;
  }
  const auto caption = rules.formatString.empty() ? std::string() : expand(path, rules.formatString);
  auto& limits = options.limits;
  if (rules.below) {
    const int lines = LinesThatFit(CaptionLines(caption, 1, 1).size(), limits.maxHeight, rules.lineHeight);
    limits.maxHeight = std::max(limits.maxHeight - lines * rules.lineHeight, 1);
  }
  auto picture = imagefiles::MakeDisplayPicture(path, options);
  const std::lock_guard guard(lock_);
  if (rules == rules_) captions_[path] = caption;  // else it is made again by now
  return picture;
}

}  // namespace ml::batch::ui
