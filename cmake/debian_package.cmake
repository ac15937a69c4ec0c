# The Debian package. Its files are a component of their own, because the other packages are one folder that can stand
# anywhere.
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/bin)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Decoder of network captures of an RT-Range hunter/target system
rtrange decodes NCOM and RCOM traffic, captured or live, into tables (CSV,
HDF5 or MAT files), plots it on one HTML page, and shows it live in a browser.
It works with a formatter plug-in, which is included, as are the headers and
an example for hosts of the plug-in.")
if(NOT CPACK_PACKAGE_CONTACT)
  set(CPACK_PACKAGE_CONTACT "The RT-Range formatter authors <rtrange@example.org>")
endif()

set(documents share/doc/rtrange)
set(debian COMPONENT debian EXCLUDE_FROM_ALL)
install(TARGETS rtrange RUNTIME DESTINATION bin ${debian})
install(TARGETS zel_rt_range_formatter zelc LIBRARY DESTINATION lib/rtrange ${debian})
install(DIRECTORY docs include DESTINATION ${documents} ${debian} PATTERN CMakeLists.txt EXCLUDE)
install(DIRECTORY examples/minimal_host DESTINATION ${documents}/examples ${debian}
  FILES_MATCHING PATTERN *.[ch] PATTERN CMakeLists.txt)
install(DIRECTORY captures DESTINATION ${documents}/examples ${debian})
install(FILES packaging/debian/rtrange.bash-completion RENAME rtrange
  DESTINATION share/bash-completion/completions ${debian})
# Where Debian's Wireshark looks for dissectors of any version.
install(FILES share/wireshark/rt_range.lua
  DESTINATION lib/${CMAKE_LIBRARY_ARCHITECTURE}/wireshark/plugins ${debian})
install_library_list(${documents} ${debian})
install(CODE "set(CONTACT \"${CPACK_PACKAGE_CONTACT}\")" ${debian})
install(SCRIPT cmake/debian_documents.cmake ${debian})

find_program(ZEL_HELP2MAN help2man)
if(ZEL_HELP2MAN AND NOT ZEL_SANITIZE)
  set(man ${PROJECT_BINARY_DIR}/man)
  add_custom_command(OUTPUT ${man}/rtrange.1.gz
    COMMAND ${PROJECT_SOURCE_DIR}/packaging/debian/man_pages.sh $<TARGET_FILE:rtrange> ${man}
    DEPENDS rtrange packaging/debian/man_pages.sh
    COMMENT "Writing man pages" VERBATIM)
  add_custom_target(man_pages ALL DEPENDS ${man}/rtrange.1.gz)
  install(DIRECTORY ${man}/ DESTINATION share/man/man1 ${debian})
else()
  message(STATUS "Without help2man, the Debian package has no man pages")
endif()
