# The pages that rtrange contains.

# The scripts that all pages share, in the order in which a page contains them.
set(shared_scripts
  gaps.js traces.js thinning.js palette.js texts.js quality_limits.js plots.js time_axis.js mouse.js touch.js
  plot_frame.js quality_bands.js time_plots.js paths.js map.js clipboard.js key_figures.js)
list(TRANSFORM shared_scripts PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
set(pages_folder ${CMAKE_CURRENT_LIST_DIR})
set(uplot ${PROJECT_SOURCE_DIR}/third_party/uplot)

# Generates NAME_page.cpp, the source of NAME/NAME_page.hpp, from NAME/page/page.html, the style STYLE
# and the scripts in the same folder, and from what all pages share.
function(add_page name style)
  set(page ${CMAKE_CURRENT_SOURCE_DIR}/${name}/page)
  list(TRANSFORM ARGN PREPEND ${page}/)
  set(scripts ${shared_scripts} ${ARGN})
  set(styles ${uplot}/uPlot.min.css ${pages_folder}/style.css ${page}/${style})
  add_custom_command(OUTPUT ${name}_page.cpp
    COMMAND ${CMAKE_COMMAND}
      -DNAME=${name} -DPAGE=${page}/page.html "-DSTYLES=${styles}" "-DSCRIPTS=${scripts}"
      -DUPLOT=${uplot} -DOUTPUT=${CMAKE_CURRENT_BINARY_DIR}/${name}_page.cpp
      -P ${pages_folder}/embed_page.cmake
    DEPENDS ${pages_folder}/embed_page.cmake ${page}/page.html ${styles} ${scripts}
      ${uplot}/uPlot.iife.min.js ${uplot}/LICENSE
    VERBATIM)
endfunction()
