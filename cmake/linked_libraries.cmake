# Script of the installation: lists what is linked into the program and the plug-in, in the form of SPDX 2.3. Versions
# are those of the Debian packages that the libraries come from.
#
# OUTPUT: the file to write. PROGRAM and PLUGIN: the built files. SYSTEM: linux or windows. ARCHITECTURE: the folder of
# Debian's libraries. VERSION and SOURCE_DIR of the project.
find_program(dpkg_query dpkg-query NO_CACHE)
find_program(objdump objdump NO_CACHE)
if(NOT dpkg_query OR NOT objdump)
  message(STATUS "Without dpkg-query and objdump, the package has no list of libraries")
  return()
endif()

set(licenses
  "cli11=BSD-3-Clause" "fmt=MIT" "httplib=MIT" "libdeflate=MIT" "nlohmann=MIT" "uPlot=MIT" "libhdf5|^hdf5=BSD-3-Clause"
  "pcap=BSD-3-Clause" "libz-=Zlib" "libc6=LGPL-2.1-or-later" "mingw-w64-x86-64-dev=ZPL-2.1"
  "gcc|g[+][+]|libstdc=GPL-3.0-or-later WITH GCC-exception-3.1")

function(license_of name variable)
  set(${variable} NOASSERTION PARENT_SCOPE)
  foreach(entry IN LISTS licenses)
    string(REGEX MATCH "^(.*)=(.*)$" matched ${entry})
    set(license ${CMAKE_MATCH_2})
    if(name MATCHES "${CMAKE_MATCH_1}")
      set(${variable} ${license} PARENT_SCOPE)
      return()
    endif()
  endforeach()
endfunction()

set(packages "")
set(relationships "")
function(add_library_entry name version reference relationship comment)
  license_of(${name} license)
  string(REGEX REPLACE "[^A-Za-z0-9.-]" "-" id "SPDXRef-${name}")
  string(APPEND packages ",
    {
      \"SPDXID\": \"${id}\",
      \"name\": \"${name}\",
      \"versionInfo\": \"${version}\",
      \"downloadLocation\": \"NOASSERTION\",
      \"filesAnalyzed\": false,
      \"licenseConcluded\": \"${license}\",
      \"licenseDeclared\": \"${license}\",
      \"copyrightText\": \"NOASSERTION\",
      \"comment\": \"${comment}\",
      \"externalRefs\": [
        {
          \"referenceCategory\": \"PACKAGE-MANAGER\",
          \"referenceType\": \"purl\",
          \"referenceLocator\": \"${reference}\"
        }
      ]
    }")
  string(APPEND relationships ",
    {
      \"spdxElementId\": \"SPDXRef-rtrange\",
      \"relationshipType\": \"${relationship}\",
      \"relatedSpdxElement\": \"${id}\"
    }")
  set(packages "${packages}" PARENT_SCOPE)
  set(relationships "${relationships}" PARENT_SCOPE)
endfunction()

macro(add_debian_package name relationship comment)
  execute_process(COMMAND ${dpkg_query} -W -f "\${Version}" ${name}
    OUTPUT_VARIABLE version COMMAND_ERROR_IS_FATAL ANY)
  add_library_entry(${name} "${version}" "pkg:deb/debian/${name}@${version}" ${relationship} "${comment}")
endmacro()

# The packages of the shared libraries that the files ask for.
macro(add_shared_libraries)
  execute_process(COMMAND ${objdump} -p ${PROGRAM} ${PLUGIN} OUTPUT_VARIABLE headers
    COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "NEEDED +[^\n]+" libraries "${headers}")
  list(TRANSFORM libraries REPLACE "NEEDED +" "")
  list(REMOVE_ITEM libraries libzelc.so)
  list(REMOVE_DUPLICATES libraries)
  set(owners "")
  foreach(library IN LISTS libraries)
    execute_process(COMMAND ${dpkg_query} -S "*/${ARCHITECTURE}/${library}"
      OUTPUT_VARIABLE owner COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE ":.*" "" owner "${owner}")
    list(APPEND owners ${owner})
  endforeach()
  list(REMOVE_DUPLICATES owners)
  list(SORT owners)
  foreach(owner IN LISTS owners)
    add_debian_package(${owner} DYNAMIC_LINK "shared library of the machine")
  endforeach()
endmacro()

set(built ${SOURCE_DIR}/build/windows-libraries/versions)
if(SYSTEM STREQUAL windows)
  foreach(library cpp-httplib fmtlib hdf5 libdeflate libpcap)
    file(STRINGS ${built}/${library} version)
    add_library_entry(${library} ${version} "pkg:deb/debian/${library}@${version}?arch=source"
      STATIC_LINK "built from Debian's source package")
  endforeach()
  foreach(library libcli11-dev nlohmann-json3-dev)
    file(STRINGS ${built}/${library} version)
    add_library_entry(${library} ${version} "pkg:deb/debian/${library}@${version}" STATIC_LINK
      "code from headers")
  endforeach()
  foreach(library g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix
      libz-mingw-w64-dev mingw-w64-x86-64-dev)
    add_debian_package(${library} STATIC_LINK "library")
  endforeach()
else()
  foreach(library libcli11-dev libcpp-httplib-dev libfmt-dev nlohmann-json3-dev)
    add_debian_package(${library} STATIC_LINK "code from headers")
  endforeach()
  add_shared_libraries()
endif()
file(READ ${SOURCE_DIR}/third_party/uplot/uPlot.iife.min.js script LIMIT 100)
string(REGEX MATCH "v([0-9.]+)" matched "${script}")
add_library_entry(uPlot ${CMAKE_MATCH_1} "pkg:npm/uplot@${CMAKE_MATCH_1}" CONTAINS
  "script that reports contain")

string(TIMESTAMP created "%Y-%m-%dT%H:%M:%SZ" UTC)
file(SHA256 ${PROGRAM} identity)
file(WRITE ${OUTPUT} "{
  \"spdxVersion\": \"SPDX-2.3\",
  \"dataLicense\": \"CC0-1.0\",
  \"SPDXID\": \"SPDXRef-DOCUMENT\",
  \"name\": \"rtrange-${VERSION}-${SYSTEM}\",
  \"documentNamespace\": \"https://example.org/spdx/rtrange-${VERSION}-${SYSTEM}-${identity}\",
  \"creationInfo\": {
    \"created\": \"${created}\",
    \"creators\": [\"Tool: rtrange-build-${VERSION}\"]
  },
  \"documentDescribes\": [\"SPDXRef-rtrange\"],
  \"packages\": [
    {
      \"SPDXID\": \"SPDXRef-rtrange\",
      \"name\": \"rtrange\",
      \"versionInfo\": \"${VERSION}\",
      \"downloadLocation\": \"NOASSERTION\",
      \"filesAnalyzed\": false,
      \"licenseConcluded\": \"MIT\",
      \"licenseDeclared\": \"MIT\",
      \"copyrightText\": \"Copyright (c) 2026 The RT-Range formatter authors\"
    }${packages}
  ],
  \"relationships\": [
    {
      \"spdxElementId\": \"SPDXRef-DOCUMENT\",
      \"relationshipType\": \"DESCRIBES\",
      \"relatedSpdxElement\": \"SPDXRef-rtrange\"
    }${relationships}
  ]
}
")
