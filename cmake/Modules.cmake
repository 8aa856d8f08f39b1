# The one place that knows how a module, a test program and their warnings are built.

add_library(ml_warnings INTERFACE)
target_compile_options(ml_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
  $<$<BOOL:${ML_WARNINGS_AS_ERRORS}>:-Werror>)

# ml_module(platform SOURCES a.cpp .. DEPENDS settings .. [PRIVATE lib ..])
# makes the static library ml_platform. DEPENDS are modules below this one (their headers may appear in
# ours), PRIVATE are third-party libraries that only our .cpp files see.
function(ml_module name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;PRIVATE" ${ARGN})
  add_library(ml_${name} STATIC ${ARG_SOURCES})
  target_include_directories(ml_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  list(TRANSFORM ARG_DEPENDS PREPEND ml_)
  target_link_libraries(ml_${name} PUBLIC ${ARG_DEPENDS} PRIVATE ml_warnings ${ARG_PRIVATE} Threads::Threads)
endfunction()

# ml_ui_module(platform SOURCES a.cpp .. [RESOURCES x.qrc ..] [DEPENDS platform imaging_ui ..] [QT Svg ..]) makes the
# static library ml_platform_ui: the Qt widgets of a module, in its folder ui/. DEPENDS are modules as above.
function(ml_ui_module name)
  cmake_parse_arguments(ARG "" "" "SOURCES;RESOURCES;DEPENDS;QT" ${ARGN})
  add_library(ml_${name}_ui STATIC ${ARG_SOURCES} ${ARG_RESOURCES})
  set_target_properties(ml_${name}_ui PROPERTIES AUTOMOC ON AUTORCC ON)
  target_include_directories(ml_${name}_ui PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_compile_definitions(ml_${name}_ui PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
  list(TRANSFORM ARG_DEPENDS PREPEND ml_)
  list(TRANSFORM ARG_QT PREPEND Qt6::)
  target_link_libraries(ml_${name}_ui PUBLIC ${ARG_DEPENDS} Qt6::Widgets PRIVATE ml_warnings ${ARG_QT} Threads::Threads)
endfunction()

# ml_test(platform SOURCES a_test.cpp .. LINK ml_platform ..) makes ml_test_platform, one ctest entry.
function(ml_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(ml_test_${name} ${ARG_SOURCES})
  target_include_directories(ml_test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(ml_test_${name} PRIVATE ML_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_link_libraries(ml_test_${name} PRIVATE ml_warnings ml_test_support ${ARG_LINK} GTest::gtest_main)
  add_test(NAME ${name} COMMAND ml_test_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600
    ENVIRONMENT "TZ=Europe/Berlin;LC_ALL=C.UTF-8;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp")
endfunction()
