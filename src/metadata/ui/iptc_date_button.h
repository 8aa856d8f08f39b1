#pragma once

#include <QPushButton>
#include <ctime>
#include <functional>
#include <optional>

#include "metadata/iptc/iptc_date_choices.h"

namespace ml::metadata::ui {

/// What dates of the image on show, and of today, a menu can offer; 0 is none.
struct IptcKnownTimes {
  std::time_t shot = 0, file = 0, now = 0;
};

/// A button with the menu that fills a date and its time.
class IptcDateButton final : public QPushButton {
  Q_OBJECT

 public:
  /// `times` is asked whenever the menu opens.
  IptcDateButton(IptcDateKind kind, std::function<IptcKnownTimes()> times, QWidget* parent);

 Q_SIGNALS:
  /// Nothing: both are to be emptied.
  void chosen(std::optional<std::time_t> time);

 private:
  void Choose(const IptcDateChoice& choice);
  void Select();

  std::function<IptcKnownTimes()> times_;
};

}  // namespace ml::metadata::ui
