# Settings shared by every target, and the functions that make targets: a folder's CMakeLists.txt names what it links and
# nothing else.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/archive)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

set(GRBLINK_SANITIZE "" CACHE STRING "Sanitizers to build with, such as address,undefined")

add_library(grblink_options INTERFACE)
target_include_directories(grblink_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(grblink_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Werror
  # Source locations are told relative to the project, the same on every machine.
  -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
target_compile_definitions(grblink_options INTERFACE GRBLINK_VERSION="${PROJECT_VERSION}")
if(GRBLINK_SANITIZE)
  target_compile_options(grblink_options INTERFACE -fsanitize=${GRBLINK_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)  # a finding ends the program, so that its test fails
  target_link_options(grblink_options INTERFACE -fsanitize=${GRBLINK_SANITIZE})
endif()

# Every source file of the calling folder, its subfolders included.
function(grblink_sources variable)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# A static library of the calling folder. LINKS: what its users get too.
function(grblink_add_library name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  grblink_sources(sources)
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC grblink_options ${ARG_LINKS})
endfunction()

# A GoogleTest executable of the calling folder, run as one ctest test named after it.
function(grblink_add_test name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  grblink_sources(sources)
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE grblink_options ${ARG_LINKS} GTest::gtest GTest::gmock GTest::gtest_main)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()

# Gurobi's own reader gives a second opinion on a format: tests NAME_written_test and NAME_corpus_test run `script` of the
# calling folder with the dump of a model and the word "written" or "corpus".
function(grblink_add_second_opinion name script)
  set(python ${Python_EXECUTABLE})
  if(NOT python)
    set(python ${PROJECT_SOURCE_DIR}/build/venv/bin/python)
  endif()
  foreach(models written corpus)
    add_test(NAME ${name}_${models}_test
      COMMAND ${python} ${CMAKE_CURRENT_SOURCE_DIR}/${script} $<TARGET_FILE:model_dump> ${models}
      WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    set_tests_properties(${name}_${models}_test PROPERTIES TIMEOUT 300)
  endforeach()
  set_tests_properties(${name}_corpus_test PROPERTIES LABELS corpus)
endfunction()
