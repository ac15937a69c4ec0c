# Read by cpack before each kind of package.
include(${CMAKE_CURRENT_LIST_DIR}/commit_time.cmake)
commit_time(${CMAKE_CURRENT_LIST_DIR}/.. seconds)
if(NOT seconds)
  string(TIMESTAMP seconds "%s" UTC)
endif()
# The time of all files in the packages.
set(ENV{SOURCE_DATE_EPOCH} ${seconds})

if(CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_INSTALL_CMAKE_PROJECTS "${CPACK_BUILD_FOLDER};${CPACK_PACKAGE_NAME};debian;/")
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
endif()
