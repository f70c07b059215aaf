# What every target of the project shares: the warning set, the include root and,
# on request, the sanitizers.
add_library(kalvo_options INTERFACE)
target_include_directories(kalvo_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(kalvo_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(KALVO_SANITIZE)
  target_compile_options(kalvo_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kalvo_options INTERFACE -fsanitize=address,undefined)
endif()
if(KALVO_FUZZ)
  target_compile_options(kalvo_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# kalvo_library(NAME SOURCES... [LINK LIBRARIES...]): one library of the tree.
function(kalvo_library name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PUBLIC kalvo_options ${ARG_LINK})
endfunction()

# What tests need not be is fast, and so they are compiled faster.
set(kalvo_test_options $<$<CONFIG:Release>:-O0>)

# kalvo_test(NAME LABEL SOURCES... [LINK LIBRARIES...] [TIMEOUT SECONDS]): one
# GoogleTest program. Tests labelled "unit" are listed one by one; a program that
# needs a display, a line or much time is one entry, so that it sets that up once.
function(kalvo_test name label)
  cmake_parse_arguments(ARG "" "TIMEOUT" "LINK" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE kalvo_options ${ARG_LINK} GTest::gmock GTest::gtest_main)
  target_compile_options(${name} PRIVATE ${kalvo_test_options})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests/bin)
  if(CMAKE_CROSSCOMPILING)
    return()  # run by tests/wine
  endif()
  if(label STREQUAL "unit")
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
      PROPERTIES LABELS ${label} TIMEOUT ${ARG_TIMEOUT})
  else()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS ${label} TIMEOUT ${ARG_TIMEOUT})
  endif()
endfunction()

# kalvo_gui_test(NAME SOURCES... [LINK LIBRARIES...]): a GoogleTest program that drives
# real windows, without a display.
function(kalvo_gui_test name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS} ${PROJECT_SOURCE_DIR}/tests/support/gui_main.cpp)
  target_link_libraries(${name} PRIVATE
    kalvo_options ${ARG_LINK} Qt6::Widgets Qt6::Test GTest::gmock)
  target_compile_options(${name} PRIVATE ${kalvo_test_options})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests/bin)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    LABELS gui TIMEOUT 120 ENVIRONMENT QT_QPA_PLATFORM=offscreen)
endfunction()
