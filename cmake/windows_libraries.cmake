# The libraries of rtrange.exe, as scripts/build-windows-libraries.sh leaves them.
set(windows_libraries ${PROJECT_SOURCE_DIR}/build/windows-libraries)
if(NOT EXISTS ${windows_libraries}/versions/nlohmann-json3-dev)
  message(FATAL_ERROR "Build the libraries first: scripts/build-windows-libraries.sh")
endif()

add_library(pcap::pcap STATIC IMPORTED GLOBAL)
set_target_properties(pcap::pcap PROPERTIES
  IMPORTED_LOCATION ${windows_libraries}/lib/libpcap.a
  INTERFACE_INCLUDE_DIRECTORIES ${windows_libraries}/include
  INTERFACE_LINK_LIBRARIES ws2_32)

add_library(hdf5::hdf5 STATIC IMPORTED)
find_library(ZEL_ZLIB NAMES libz.a REQUIRED)
set_target_properties(hdf5::hdf5 PROPERTIES
  IMPORTED_LOCATION ${windows_libraries}/lib/libhdf5.a
  INTERFACE_INCLUDE_DIRECTORIES ${windows_libraries}/include
  INTERFACE_LINK_LIBRARIES "${ZEL_ZLIB};ws2_32")

add_library(httplib::httplib INTERFACE IMPORTED GLOBAL)
set_target_properties(httplib::httplib PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES ${windows_libraries}/include
  INTERFACE_LINK_LIBRARIES ws2_32)
