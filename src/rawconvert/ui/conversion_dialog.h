#pragma once

#include <QDialog>
#include <string>

#include "platform/interaction.h"
#include "rawconvert/ui/conversion_question.h"

class QTabWidget;

namespace ml::rawconvert::ui {

class DevelopPage;
class OutputPage;
class PostPage;

enum class ConversionAnswer { Cancel, One, Several };

/// The settings of a conversion: of one image, after which others may follow, or of a batch.
class ConversionDialog final : public QDialog {
  Q_OBJECT

 public:
  /// The fields begin with `start`, which was brought to what the camera knows, see OpenChoice(). `ask` shows boxes;
  /// it and whatever `question` refers to outlive the dialog.
  ConversionDialog(const ConversionQuestion& question, const ConversionChoice& start, platform::Interaction& ask,
                   QWidget* parent = nullptr);

  /// Shows the dialog at `place`, which is in the toolkit's own form and tells afterwards where it stood.
  ConversionAnswer RunAt(std::string& place);
  /// As the fields have it now.
  const ConversionChoice& Choice() const { return choice_; }

 private:
  void AddPages();
  void AddButtons();
  void Finish(ConversionAnswer answer);
  void Changed();
  bool TellComplaint();
  bool MayReduce();
  QSize FirstSize() const;

  const ConversionQuestion question_;
  ConversionChoice choice_;
  platform::Interaction& ask_;
  QTabWidget* tabs_;
  DevelopPage* develop_;
  PostPage* post_ = nullptr;
  OutputPage* output_;
  ConversionAnswer answer_ = ConversionAnswer::Cancel;
  bool shown_ = false;
};

}  // namespace ml::rawconvert::ui
