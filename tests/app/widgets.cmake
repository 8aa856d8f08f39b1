find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
ml_test(widgets
  SOURCES
    directory_tree_test.cpp
    histogram_panel_test.cpp
    job_window_test.cpp
    shooting_data_window_test.cpp
    thumbnail_drag_test.cpp
    thumbnail_list_test.cpp
    toolkit_test.cpp
    widgets_main.cpp
  LINK ml_app_ui ml_catalogue_ui ml_imagefiles_ui Qt6::Test)
ml_test(preferences_ui
  SOURCES
    preferences_dialog_test.cpp
    widgets_main.cpp
  LINK ml_preferences_ui ml_app_ui Qt6::Test)
ml_test(iptc_ui
  SOURCES
    iptc_sheet_test.cpp
    widgets_main.cpp
  LINK ml_metadata_ui ml_app_ui Qt6::Test)
ml_test(batch_ui
  SOURCES
    batch_rename_dialog_test.cpp
    slideshow_window_test.cpp
    widgets_main.cpp
  LINK ml_batch_ui ml_app_ui Qt6::Test)
# What is drawn pixel for pixel, once more on a screen of twice the density.
add_test(NAME widgets_scale2 COMMAND ml_test_widgets --gtest_filter=*PixelForPixel:PictureView.*:Icons.*)
set_tests_properties(widgets_scale2 PROPERTIES TIMEOUT 600 ENVIRONMENT "LC_ALL=C.UTF-8;QT_SCALE_FACTOR=2")
ml_test(conversion_ui
  SOURCES
    conversion_dialog_test.cpp
    widgets_main.cpp
  LINK ml_rawconvert_ui ml_app_ui Qt6::Test)
