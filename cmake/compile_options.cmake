# Options of all code of the project; third-party code is built without them.
add_library(zel_compile_options INTERFACE)
target_include_directories(zel_compile_options INTERFACE ${PROJECT_SOURCE_DIR})

if(MSVC)
  target_compile_options(zel_compile_options INTERFACE /W4 /fp:precise /utf-8)
else()
  # Recordings are compared byte for byte, so no multiply and add may be fused.
  target_compile_options(zel_compile_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
    # A unique symbol would keep the plug-in from ever being unloaded.
    target_compile_options(zel_compile_options INTERFACE
      $<$<COMPILE_LANGUAGE:CXX>:-fno-gnu-unique>)
  endif()
endif()

# The same sources give the same bytes in any folder, on any day.
if(NOT MSVC)
  add_compile_options(-ffile-prefix-map=${PROJECT_BINARY_DIR}=build
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
endif()
if(MINGW)
  add_link_options(-Wl,--no-insert-timestamp)
endif()

if(ZEL_WARNINGS_AS_ERRORS)
  target_compile_options(zel_compile_options INTERFACE $<IF:$<BOOL:${MSVC}>,/WX,-Werror>)
endif()

if(ZEL_SANITIZE)
  add_compile_options(-fsanitize=${ZEL_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZEL_SANITIZE})
endif()

if(ZEL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
