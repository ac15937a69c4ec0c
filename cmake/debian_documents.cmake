# Script of the installation: the documents that every Debian package has, from those of the project.
set(folder $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/doc/rtrange)
file(MAKE_DIRECTORY ${folder})

file(READ ${SOURCE_DIR}/LICENSE copyright)
string(APPEND copyright "
The program rtrange contains code from the headers of CLI11, cpp-httplib, fmt and JSON for Modern
C++, and its pages contain uPlot. Their licences follow.
")
set(CLI11 /usr/share/doc/libcli11-dev/copyright)
set(cpp-httplib /usr/share/doc/libcpp-httplib-dev/copyright)
set(fmt /usr/share/doc/libfmt-dev/copyright)
set(JSON /usr/share/doc/nlohmann-json3-dev/copyright)
set(uPlot ${SOURCE_DIR}/third_party/uplot/LICENSE)
foreach(library CLI11 cpp-httplib fmt JSON uPlot)
  file(READ ${${library}} text)
  string(APPEND copyright "\n== ${library} ==\n\n${text}")
endforeach()
file(WRITE ${folder}/copyright "${copyright}")

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${folder}/changelog "rtrange (${VERSION}) unstable; urgency=medium

  * Release ${VERSION}; CHANGELOG.md lists the changes.

 -- ${CONTACT}  ${date}
")
file(READ ${SOURCE_DIR}/CHANGELOG.md changes)
file(WRITE ${folder}/CHANGELOG.md "${changes}")
execute_process(COMMAND gzip -9nf ${folder}/changelog ${folder}/CHANGELOG.md
  COMMAND_ERROR_IS_FATAL ANY)
