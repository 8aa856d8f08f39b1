#pragma once

#include <QWidget>
#include <string>

#include "catalogue/image_list.h"
#include "imagefiles/histogram_curves.h"

class QAction;
class QCheckBox;
class QComboBox;
class QToolButton;

namespace ml::imagefiles::ui {
class HistogramPanel;
}

namespace ml::app {

class SummaryPane;

/// The column beside the picture in the main view: names, tag, neighbours, summary, histogram.
class ControlColumn final : public QWidget {
  Q_OBJECT

 public:
  explicit ControlColumn(QWidget* parent);

  /// The buttons do what these do, and are on when these are.
  void SetActions(QAction* previous, QAction* next);
  /// All names of the list.
  void ListReplaced(const catalogue::ImageList& list);
  /// The current image and its tag.
  void Refresh(const catalogue::ImageList& list, const std::string& summary);
  void ShowHistogram(const imagefiles::Histogram& counts, const imagefiles::HistogramChannels& wanted);

 Q_SIGNALS:
  void imageChosen(int index);
  void tagToggled();

 private:
  QComboBox* names_;
  QCheckBox* tagged_;
  QToolButton* previous_;
  QToolButton* next_;
  SummaryPane* summary_;
  imagefiles::ui::HistogramPanel* histogram_;
};

}  // namespace ml::app
