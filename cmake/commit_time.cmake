# Sets the variable to SOURCE_DATE_EPOCH if that is set, otherwise to the time of the folder's commit; both in seconds
# since 1970. Sources without git have no time: the variable is then empty.
function(commit_time folder variable)
  set(seconds "$ENV{SOURCE_DATE_EPOCH}")
  if(seconds STREQUAL "")
    execute_process(COMMAND git -C ${folder} log -1 --format=%ct
      OUTPUT_VARIABLE seconds OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  endif()
  set(${variable} "${seconds}" PARENT_SCOPE)
endfunction()
