# Script: fills TEMPLATE in as OUTPUT with VERSION, and with the git revision of SOURCE_DIR and its date. The date of
# the commit, not of the build: the same commit gives the same bytes on any day.
include(${CMAKE_CURRENT_LIST_DIR}/commit_time.cmake)
set(REVISION 00000000)
set(DIRTY "")
execute_process(COMMAND git -C ${SOURCE_DIR} rev-parse --short=8 HEAD
  OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE failed ERROR_QUIET)
if(failed EQUAL 0)
  string(SUBSTRING ${found} 0 8 REVISION)
  execute_process(COMMAND git -C ${SOURCE_DIR} status --porcelain
    OUTPUT_VARIABLE changes ERROR_QUIET)
  if(NOT changes STREQUAL "")
    set(DIRTY "-dirty")
  endif()
endif()

set(BUILD_DATE __DATE__)
commit_time(${SOURCE_DIR} seconds)
if(seconds)
  set(ENV{SOURCE_DATE_EPOCH} ${seconds})
  string(TIMESTAMP BUILD_DATE "\"%b %d %Y\"" UTC)
  # As the compiler writes it: a day of one digit has a space before it.
  string(REPLACE " 0" "  " BUILD_DATE ${BUILD_DATE})
endif()
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
