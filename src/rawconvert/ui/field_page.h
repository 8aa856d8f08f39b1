#pragma once

#include <QScrollArea>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QAbstractButton;
class QGridLayout;
class QLabel;

namespace ml::rawconvert::ui {

/// One field of a page, with its label, and below it what is wrong with its value.
class PageField {
 public:
  PageField(QLabel* label, QWidget* whole, QLabel* remark) : label_(label), whole_(whole), remark_(remark) {}

  /// Off with this reason as its tool tip; on for an empty one.
  void SetReason(std::string_view reason);
  /// Nothing is shown of a field that is off.
  void SetRemark(const std::string& sentence);
  bool Counts() const;

 private:
  QLabel* label_;  ///< null for a field that tells its name itself
  QWidget* whole_;
  QLabel* remark_;
};

/// Why a dialog cannot be accepted.
struct Complaint {
  std::string sentence;
  QWidget* field = nullptr;
  std::function<void()> repair{};  ///< called when the user has read it; may be empty
};

/// A page of fields in one column, their labels left; scrolls where the screen is too small.
class FieldPage : public QScrollArea {
 public:
  explicit FieldPage(QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void AddHeading(const char* text);
  /// `whole` holds `focus`, which takes the keyboard and is called `name`, also by tests.
  PageField AddField(const char* name, const char* label, QWidget* whole, QWidget* focus);
  PageField AddField(const char* name, const char* label, QWidget* field) {
    return AddField(name, label, field, field);
  }
  struct Part {
    const char* name;
    const char* label;  ///< before the field; what tools for the blind read
    QWidget* field;
  };
  /// Several short fields in one row.
  std::vector<PageField> AddParts(const std::vector<Part>& parts);
  /// Takes the whole width.
  PageField AddButton(const char* name, QAbstractButton* button);
  /// A row of fields that are told apart by labels between them.
  static QWidget* Row(std::initializer_list<QWidget*> widgets);
  /// Below the last field.
  void Close();
  QWidget* Content() const { return content_; }

 private:
  QLabel* AddRemark(QWidget* field);

  QWidget* content_;
  QGridLayout* grid_;
};

}  // namespace ml::rawconvert::ui
