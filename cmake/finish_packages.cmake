# Run by cpack after each kind of package: makes it the same bytes on any machine, and lists the check sums of all.
set(ENV{LC_ALL} C)
set(ENV{TZ} UTC)
cmake_path(GET CPACK_TEMPORARY_DIRECTORY PARENT_PATH parent)
cmake_path(GET CPACK_TEMPORARY_DIRECTORY FILENAME folder)
find_program(zip zip)

macro(run_in_parent)
  execute_process(${ARGN} WORKING_DIRECTORY ${parent} COMMAND_ERROR_IS_FATAL ANY)
endmacro()

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  if(package MATCHES "\\.tar\\.gz$")
    # In the order of names; cpack's is that of the file system.
    run_in_parent(
      COMMAND tar --create --format=gnu --sort=name --mtime=@$ENV{SOURCE_DATE_EPOCH}
        --owner=root:0 --group=root:0 --mode=u=rwX,go=rX ${folder}
      COMMAND gzip -9n OUTPUT_FILE ${package})
  elseif(package MATCHES "\\.zip$" AND zip)
    file(REMOVE ${package})
    run_in_parent(COMMAND chmod -R u=rwX,go=rX ${folder})
    run_in_parent(COMMAND find ${folder} -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} +)
    run_in_parent(COMMAND find ${folder} COMMAND sort COMMAND ${zip} -q -9 -X -@ ${package})
  elseif(package MATCHES "\\.deb$")
    # Without cpack's scripts, which call ldconfig; the linker does not look into /usr/lib/rtrange.
    file(REMOVE_RECURSE ${parent}/unpacked)
    run_in_parent(COMMAND dpkg-deb -R ${package} unpacked)
    file(REMOVE ${parent}/unpacked/DEBIAN/postinst ${parent}/unpacked/DEBIAN/postrm)
    run_in_parent(COMMAND chmod -R u=rwX,go=rX unpacked)
    run_in_parent(COMMAND dpkg-deb --root-owner-group --threads-max=1 -Zxz --build unpacked ${package}
      OUTPUT_QUIET)
  endif()
endforeach()

# Those made before are in the folder already; cpack moves the new ones there.
file(GLOB packages LIST_DIRECTORIES false
  ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_NAME}[-_]${CPACK_PACKAGE_VERSION}[-_]*)
set(lines "")
set(seen "")
foreach(package IN LISTS CPACK_PACKAGE_FILES packages)
  cmake_path(GET package FILENAME name)
  if(NOT name IN_LIST seen)
    file(SHA256 ${package} sum)
    list(APPEND seen ${name})
    list(APPEND lines "${sum}  ${name}\n")
  endif()
endforeach()
file(WRITE ${CPACK_PACKAGE_DIRECTORY}/SHA256SUMS ${lines})
