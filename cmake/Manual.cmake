# The manual pages and the help, made of docs/manual with every build where cmark-gfm is installed.
find_program(CMARK cmark-gfm)
if(CMARK)
  file(GLOB_RECURSE manual_sources CONFIGURE_DEPENDS docs/manual/*.md docs/manual/*.css
       docs/pictures/*.png)
  add_custom_command(
    OUTPUT ${CMAKE_BINARY_DIR}/help/index.html
    COMMAND ${PROJECT_SOURCE_DIR}/scripts/make_manual ${PROJECT_VERSION} ${CMAKE_BINARY_DIR}
    DEPENDS ${manual_sources} scripts/make_manual CMakeLists.txt)
  add_custom_target(manual ALL DEPENDS ${CMAKE_BINARY_DIR}/help/index.html)
endif()
