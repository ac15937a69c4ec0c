# GTest::gtest_main, of the same kind as the tests: an installed library has not been built with the
# sanitizers, and there is none for MinGW. These are built from GoogleTest's sources.
if(NOT ZEL_SANITIZE AND NOT ZEL_GOOGLETEST_SOURCES)
  find_package(GTest QUIET)
endif()
if(TARGET GTest::gtest_main)
  return()
endif()

set(sources ${ZEL_GOOGLETEST_SOURCES})
if(NOT sources)
  find_path(sources NAMES googletest/CMakeLists.txt PATHS /usr/src /usr/local/src
    PATH_SUFFIXES googletest NO_CMAKE_FIND_ROOT_PATH NO_CACHE)
endif()
if(NOT sources)
  message(FATAL_ERROR "There is no GoogleTest. Install Debian's packages libgtest-dev and googletest, "
    "or name a folder with its sources: -DZEL_GOOGLETEST_SOURCES=FOLDER")
endif()
set(BUILD_GMOCK OFF)
set(INSTALL_GTEST OFF)
set(BUILD_SHARED_LIBS OFF)
add_subdirectory(${sources} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlapping copies in its own strings.
  target_compile_options(gtest PRIVATE -Wno-restrict)
endif()
