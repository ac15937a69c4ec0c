# Script: writes OUTPUT, the C++ source of NAME_page.hpp, from the file PAGE, the files STYLES and SCRIPTS,
# and the library in UPLOT. The page has a placeholder line for each part, and one for data where it has
# any: then its head and its tail are separate texts.

function(put what text)
  string(REPLACE "<!-- ${what} -->" "${text}" page "${page}")
  set(page "${page}" PARENT_SCOPE)
endfunction()

function(read_all name)
  set(all "")
  foreach(file IN LISTS ARGN)
    file(READ ${file} text)
    string(APPEND all "${text}\n")
  endforeach()
  set(${name} "${all}" PARENT_SCOPE)
endfunction()

file(READ ${PAGE} page)
file(READ ${UPLOT}/uPlot.iife.min.js uplot_script)
file(READ ${UPLOT}/LICENSE licence)
read_all(styles ${STYLES})
read_all(scripts ${SCRIPTS})
put(style "<style>\n${styles}</style>")
put(uplot "<script>\n/*\nuPlot\n\n${licence}*/\n${uplot_script}</script>")
put(scripts "<script>\n${scripts}</script>")

# Appends a function that returns the text. Its bytes are an array, because compilers limit the length of
# string literals.
function(add_text function text)
  file(WRITE ${OUTPUT}.part "${text}")
  file(READ ${OUTPUT}.part hexadecimal HEX)
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${hexadecimal}")
  set(source "${source}
std::string_view ${function}() {
    static const unsigned char bytes[] = {${bytes}};
    return {reinterpret_cast<const char*>(bytes), sizeof(bytes)};
}
" PARENT_SCOPE)
endfunction()

set(source "// Written by the build.
#include \"tools/rtrange/${NAME}/${NAME}_page.hpp\"

namespace rtrange {
")
set(data "<!-- data -->\n")
string(FIND "${page}" "${data}" at)
if(at EQUAL -1)
  add_text(${NAME}_page "${page}")
else()
  string(LENGTH "${data}" length)
  math(EXPR behind "${at} + ${length}")
  string(SUBSTRING "${page}" 0 ${at} head)
  string(SUBSTRING "${page}" ${behind} -1 tail)
  add_text(${NAME}_page_head "${head}")
  add_text(${NAME}_page_tail "${tail}")
endif()
file(WRITE ${OUTPUT} "${source}
} // namespace rtrange
")
