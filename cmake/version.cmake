# Writes version.hpp on every build, so that the metadata always names the revision built, and its date.

# Hosts recognise the interface by the minor version in the metadata.
file(STRINGS ${PROJECT_SOURCE_DIR}/include/zel/api.h interface_version
  REGEX "^#define ZEL_INTERFACE_VERSION ")
if(NOT interface_version STREQUAL "#define ZEL_INTERFACE_VERSION ${PROJECT_VERSION_MINOR}"
   OR NOT PROJECT_VERSION_MAJOR EQUAL 0)
  message(FATAL_ERROR "The project's version is ${PROJECT_VERSION}, but include/zel/api.h says "
    "'${interface_version}': with interface version N, the project's version is 0.N.<patch>.")
endif()
# A change of the header is noticed by the next build.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/zel/api.h)

set(version ${CMAKE_CXX_COMPILER_VERSION})
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND version MATCHES "^[0-9]+\\.0")
  # No release of GCC has a minor version of 0. Debian's MinGW-w64 says so everywhere, in its macros
  # too, but its package has the full version.
  file(REAL_PATH ${CMAKE_CXX_COMPILER} compiler)
  execute_process(COMMAND dpkg-query -S ${compiler} OUTPUT_VARIABLE package ERROR_QUIET)
  string(REGEX REPLACE ": .*" "" package "${package}")
  execute_process(COMMAND dpkg-query -W -f "\${Version}" "${package}"
    OUTPUT_VARIABLE package_version ERROR_QUIET)
  if(package_version MATCHES "^[0-9]+\\.[0-9]+\\.[0-9]+")
    set(version ${CMAKE_MATCH_0})
  endif()
endif()

# Two digits major, two digits minor, five digits patch level.
string(REGEX MATCHALL "[0-9]+" numbers "${version}.0.0")
list(GET numbers 0 major)
list(GET numbers 1 minor)
list(GET numbers 2 patch)
math(EXPR padded "1000000000 + (${major} * 100 + ${minor}) * 100000 + ${patch}")
string(SUBSTRING ${padded} 1 9 ZEL_COMPILER_VERSION)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(ZEL_COMPILER GCC)
else()
  set(ZEL_COMPILER ${CMAKE_CXX_COMPILER_ID})
endif()

add_library(zel_version INTERFACE)
target_include_directories(zel_version INTERFACE ${PROJECT_BINARY_DIR}/generated)
add_custom_target(zel_version_header
  COMMAND ${CMAKE_COMMAND}
    -DVERSION=${PROJECT_VERSION}
    -DCOMPILER=${ZEL_COMPILER}
    -DCOMPILER_VERSION=${ZEL_COMPILER_VERSION}
    -DSOURCE_DIR=${PROJECT_SOURCE_DIR}
    -DTEMPLATE=${PROJECT_SOURCE_DIR}/cmake/version.hpp.in
    -DOUTPUT=${PROJECT_BINARY_DIR}/generated/version.hpp
    -P ${PROJECT_SOURCE_DIR}/cmake/write_version.cmake
  BYPRODUCTS ${PROJECT_BINARY_DIR}/generated/version.hpp
  COMMENT "Looking up the revision" VERBATIM)
add_dependencies(zel_version zel_version_header)
