#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "metadata/iptc/iptc_fields.h"

namespace ml::metadata::ui {

/// The widgets that edit the values of one dataset. Bytes that nobody touches come back as they were, whatever they
/// are.
class IptcFieldEditor : public QWidget {
  Q_OBJECT

 public:
  IptcFieldEditor(const IptcField& field, QWidget* parent) : QWidget(parent), dataset_(field.dataset) {}
  int Dataset() const { return dataset_; }

  /// Without telling.
  virtual void Show(const std::vector<std::string>& values) = 0;
  /// None of them empty.
  virtual std::vector<std::string> Values() const = 0;
  /// Takes the place of what is there, as the user would.
  virtual void Enter(const std::string& value) = 0;
  /// Puts a text where the cursor is, as the user would, and takes the keyboard.
  virtual void Insert(const QString& text) = 0;
  /// Takes the keyboard.
  virtual QWidget* Focus() = 0;

 Q_SIGNALS:
  void edited();
  /// The user is done with the field for now.
  void left();

 private:
  const int dataset_;
};

/// As the kind of the field asks for.
IptcFieldEditor* MakeIptcFieldEditor(const IptcField& field, QWidget* parent);

}  // namespace ml::metadata::ui
