#include <gtest/gtest.h>

#include <QApplication>
#include <clocale>

#include "app/theme.h"

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  setlocale(LC_NUMERIC, "C");
  ml::app::ApplyTheme(application, ml::app::Scheme::Light);
  return RUN_ALL_TESTS();
}
