# The widgets of the window that know nothing of its commands.
ml_ui_module(app
  SOURCES
    icons.cpp
    picture_view.cpp
    summary_pane.cpp
    system_scheme.cpp
    theme.cpp
    theme_style.cpp
  DEPENDS imaging_ui platform_ui
  QT DBus)
