#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "metadata/iptc/iptc_batch.h"
#include "metadata/iptc/iptc_fields.h"
#include "metadata/ui/iptc_date_button.h"
#include "platform/clock.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QTabWidget;

namespace ml::metadata::ui {

class IptcPageView;
class IptcTokenButton;

/// How edited values get into images. Both throw UserError, or Cancelled.
struct IptcApplier {
  std::function<void(const std::string& path, const IptcSheetValues& values)> one;
  std::function<IptcBatchReport(const IptcBatch& batch, QWidget& parent)> many;
};

/// What the sheet needs of the program around it.
struct IptcSheetHost {
  std::function<ExifData(const std::string& path)> read;
  /// Nothing if the user cancelled.
  std::function<std::optional<std::string>(QWidget& parent)> chooseFileToLoad, chooseFileToSave;
  /// A format string with the values of this image.
  std::function<std::string(const ExifData& image, std::string_view format)> expand;
  const platform::Clock& clock;
  IptcApplier apply;
};

/// The images that the sheet goes through and writes into, by their paths.
struct IptcSheetImages {
  std::vector<std::string> steps;  ///< for previous and next; not empty
  std::size_t first = 0;           ///< of them, shown at once
  std::vector<std::string> selected, all;
};

/// What becomes of the values that images have when many are written.
struct IptcBatchRules {
  IptcMergeRules merge;  ///< without a timestamp
  bool exifTimestamp = true;
};

/// IPTC data of one image after the other, on five pages. What was edited leaves the sheet by Apply, or after the user
/// was asked.
class CIptcPropertySheet final : public QDialog {
  Q_OBJECT

 public:
  CIptcPropertySheet(IptcSheetImages images, const IptcBatchRules& rules, IptcSheetHost host, QWidget* parent);
  ~CIptcPropertySheet() override;

  const IptcBatchRules& Rules() const { return rules_; }
  int Page() const;
  /// A number outside is ignored.
  void ShowPage(int page);
  /// Of the image on show.
  const std::string& Path() const { return images_.steps[index_]; }

  void reject() override;

 private:
  void MakePages();
  QWidget* MakeSteps();
  QWidget* MakeRules();
  QWidget* MakeButtons();
  QPushButton* MakeApply(const char* text, const QString& does, void (CIptcPropertySheet::*run)());
  void MakeKeys();

  void ShowImage(std::size_t index);
  void ShowValues(const IptcSheetValues& values);
  void Refresh();
  void Step(int by);
  void PageChanged(int page);

  IptcSheetValues Values() const;
  bool HasChanges() const { return Values() != original_; }
  /// True if what was changed may go.
  bool MayLeave();
  /// Shows the first fault, of one page or of all.
  bool IsValid(std::optional<int> page = std::nullopt);
  IptcKnownTimes KnownTimes() const;

  void Load();
  void Save();
  void Apply();
  void ApplyToSelected() { ApplyToMany(images_.selected); }
  void ApplyToAll() { ApplyToMany(images_.all); }
  bool ApplyOne();
  void ApplyToMany(const std::vector<std::string>& paths);
  /// False if it failed, which the user was told.
  bool Try(const std::function<void()>& act);

  IptcSheetImages images_;
  IptcBatchRules rules_;
  IptcSheetHost host_;
  std::size_t index_ = 0;
  ExifData image_;
  IptcSheetValues original_;
  std::set<std::string> known_;  ///< words in the lists of images seen so far

  std::array<IptcPageView*, kIptcPageTitles.size()> pages_{};
  int page_ = 0;
  QTabWidget* tabs_ = nullptr;
  QLabel* place_ = nullptr;
  QLabel* report_ = nullptr;
  IptcTokenButton* tokens_ = nullptr;
  QPushButton *previous_ = nullptr, *next_ = nullptr, *apply_ = nullptr, *selected_ = nullptr;
};

}  // namespace ml::metadata::ui
