# What cpack puts into a package, of what is built. The plug-in stands in a folder alone, to be copied into a host, which
# has a zelc of its own. The reference host's libraries, for those who write a host, stand apart, too, with
# targets for find_package(zel); rtrange has its own copy of zelc, because a program finds its libraries beside it.
install(TARGETS zel_rt_range_formatter LIBRARY DESTINATION plugin)
if(ZEL_BUILD_TOOLS)
  install(TARGETS rtrange zelc RUNTIME DESTINATION bin LIBRARY DESTINATION bin)
endif()
set_target_properties(zel_interface PROPERTIES EXPORT_NAME interface)
set_target_properties(zel_host_loader PROPERTIES EXPORT_NAME loader)
install(TARGETS zel_interface zelc zelcpp zel_host_loader EXPORT zel
  RUNTIME DESTINATION reference-host
  LIBRARY DESTINATION reference-host
  ARCHIVE DESTINATION reference-host)
install(EXPORT zel NAMESPACE zel:: FILE zel-config.cmake DESTINATION cmake)
include(CMakePackageConfigHelpers)
write_basic_package_version_file(zel-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zel-config-version.cmake DESTINATION cmake)
install(TARGETS zelc_check RUNTIME DESTINATION reference-host)
if(WIN32)
  install(FILES host/zelc/zelc.def DESTINATION reference-host)
endif()
install(DIRECTORY include/zel include/zelcpp DESTINATION include)
install(DIRECTORY host/loader DESTINATION include/host FILES_MATCHING PATTERN *.hpp)
install(DIRECTORY docs captures share DESTINATION .)
install(DIRECTORY examples/minimal_host DESTINATION examples
  FILES_MATCHING PATTERN *.[ch] PATTERN CMakeLists.txt)
install(FILES packaging/README.md CHANGELOG.md LICENSE DESTINATION .)

if(WIN32)
  set(system windows)
  set(CPACK_GENERATOR ZIP)
else()
  set(system linux)
  set(CPACK_GENERATOR TGZ)
endif()

# Writes rtrange.spdx.json into a folder of a package; further arguments are options of install().
function(install_library_list folder)
  install(CODE "set(OUTPUT \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${folder}/rtrange.spdx.json\")
set(PROGRAM \"$<TARGET_FILE:rtrange>\")
set(PLUGIN \"$<TARGET_FILE:zel_rt_range_formatter>\")
set(SYSTEM ${system})
set(ARCHITECTURE ${CMAKE_LIBRARY_ARCHITECTURE})
set(VERSION ${PROJECT_VERSION})
set(SOURCE_DIR \"${PROJECT_SOURCE_DIR}\")" ${ARGN})
  install(SCRIPT cmake/linked_libraries.cmake ${ARGN})
endfunction()

if(ZEL_BUILD_TOOLS)
  install(FILES third_party/uplot/LICENSE DESTINATION licenses RENAME uPlot.txt)
  install_library_list(licenses)
endif()
if(ZEL_BUILD_TOOLS AND WIN32)
  install(DIRECTORY build/windows-libraries/licenses DESTINATION .)
elseif(ZEL_BUILD_TOOLS)
  # Of these, code from the headers is in the program; the other libraries are the machine's.
  install(FILES /usr/share/doc/libcli11-dev/copyright DESTINATION licenses RENAME CLI11.txt)
  install(FILES /usr/share/doc/libcpp-httplib-dev/copyright DESTINATION licenses
    RENAME cpp-httplib.txt)
  install(FILES /usr/share/doc/nlohmann-json3-dev/copyright DESTINATION licenses
    RENAME nlohmann-json.txt)
  install(FILES /usr/share/doc/libfmt-dev/copyright DESTINATION licenses RENAME fmtlib.txt)
endif()

set(CPACK_PACKAGE_NAME rtrange)
set(CPACK_PACKAGE_FILE_NAME rtrange-${PROJECT_VERSION}-${system}-x86_64)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_STRIP_FILES ON)
set(CPACK_BUILD_FOLDER ${PROJECT_BINARY_DIR})
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/cpack_project.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/finish_packages.cmake)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
find_program(ZEL_DPKG_SHLIBDEPS dpkg-shlibdeps)
if(ZEL_BUILD_TOOLS AND ZEL_DPKG_SHLIBDEPS AND NOT WIN32)
  list(APPEND CPACK_GENERATOR DEB)
  include(cmake/debian_package.cmake)
endif()
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
