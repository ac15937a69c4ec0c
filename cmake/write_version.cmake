# Script: fills TEMPLATE in as OUTPUT with VERSION and the git revision of SOURCE_DIR.
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
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
