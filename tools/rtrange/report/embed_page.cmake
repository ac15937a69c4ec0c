# Script: writes OUTPUT, the C++ source of report_page.hpp, from the files in PAGE and from UPLOT.
# The page has a placeholder line for each part.

function(put what text)
  string(REPLACE "<!-- ${what} -->" "${text}" page "${page}")
  set(page "${page}" PARENT_SCOPE)
endfunction()

file(READ ${PAGE}/page.html page)
file(READ ${PAGE}/style.css style)
file(READ ${UPLOT}/uPlot.min.css uplot_style)
file(READ ${UPLOT}/uPlot.iife.min.js uplot_script)
file(READ ${UPLOT}/LICENSE licence)
set(scripts "")
foreach(name IN LISTS SCRIPTS)
  file(READ ${PAGE}/${name} script)
  string(APPEND scripts "${script}\n")
endforeach()
put(style "<style>\n${uplot_style}\n${style}</style>")
put(uplot "<script>\n/*\nuPlot\n\n${licence}*/\n${uplot_script}</script>")
put(scripts "<script>\n${scripts}</script>")

set(data "<!-- data -->\n")
string(FIND "${page}" "${data}" at)
string(LENGTH "${data}" length)
math(EXPR behind "${at} + ${length}")
string(SUBSTRING "${page}" 0 ${at} head)
string(SUBSTRING "${page}" ${behind} -1 tail)

# An array of bytes, because compilers limit the length of string literals.
function(as_bytes name text)
  file(WRITE ${OUTPUT}.part "${text}")
  file(READ ${OUTPUT}.part hexadecimal HEX)
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${hexadecimal}")
  set(${name} "const unsigned char ${name}[] = {${bytes}};" PARENT_SCOPE)
endfunction()
as_bytes(head_bytes "${head}")
as_bytes(tail_bytes "${tail}")

file(WRITE ${OUTPUT} "// Written by the build.
#include \"tools/rtrange/report/report_page.hpp\"

namespace rtrange {
namespace {

${head_bytes}
${tail_bytes}

} // namespace

std::string_view report_page_head() {
    return {reinterpret_cast<const char*>(head_bytes), sizeof(head_bytes)};
}

std::string_view report_page_tail() {
    return {reinterpret_cast<const char*>(tail_bytes), sizeof(tail_bytes)};
}

} // namespace rtrange
")
