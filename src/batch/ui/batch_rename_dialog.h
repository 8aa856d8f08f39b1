#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/new_names.h"
#include "batch/ui/rename_form.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace ml::batch::ui {

class RenameListPane;

enum class RenameTargets { Selected, All };

struct RenameDialogInput {
  std::vector<RenameImage> images;      ///< in the order on show
  std::vector<std::string> otherFiles;  ///< see OtherFiles
  RenameTargets targets = RenameTargets::Selected;
};

/// Throws UserError if the renaming may not be done.
using RenameCheck = std::function<void(const NewNames& names, const RenameStyle& style)>;

/// Chooses how the names of a batch are made, over a list of what comes out. Renames nothing itself.
class CBatchRenameDialog final : public QDialog {
  Q_OBJECT

 public:
  CBatchRenameDialog(RenameDialogInput input, const RenameChoices& choices, RenameCheck check, QWidget* parent);
  ~CBatchRenameDialog() override;

  const NewNames& Names() const { return names_; }
  const RenameForm& Form() const { return form_; }

  /// Only once the names were checked.
  void accept() override;

 private:
  /// Whether conflicts are told of in a box, too.
  enum class Tell { Quietly, ByBox };

  void MakeFields(QGridLayout& grid);
  void MakeFormatField(QGridLayout& grid);
  void MakeNumberFields(QGridLayout& grid);
  QWidget* MakeButtons();
  void ConnectFields();
  std::string ExampleOf(std::string_view token) const;

  void ShowForm();
  void ShowNumber(QSpinBox& box, const NumberField& field);
  void Rebuild(Tell tell);

  RenameDialogInput input_;
  RenameForm form_;
  RenameCheck check_;
  NewNames names_;

  QComboBox *style_ = nullptr, *sort_ = nullptr, *case_ = nullptr;
  QLineEdit *name_ = nullptr, *format_ = nullptr;
  QPushButton* insert_ = nullptr;
  QSpinBox *digits_ = nullptr, *firstNumber_ = nullptr;
  QCheckBox* continuous_ = nullptr;
  RenameListPane* list_ = nullptr;
};

}  // namespace ml::batch::ui
