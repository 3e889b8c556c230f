# The dot-matrix font QXDOTFNT is kept as text (controls/QXDOTFNT.txt), so a glyph is corrected
# by editing it; a small host program turns it into the 16-colour bitmap at build time.
add_executable(qxdotfont ${CMAKE_CURRENT_LIST_DIR}/controls/dotfont.cpp)
set(QX_DOTFONT_DIR ${CMAKE_CURRENT_BINARY_DIR}/resources/controls)
add_custom_command(
  OUTPUT ${QX_DOTFONT_DIR}/QXDOTFNT.bmp
  COMMAND ${CMAKE_COMMAND} -E make_directory ${QX_DOTFONT_DIR}
  COMMAND qxdotfont ${CMAKE_CURRENT_LIST_DIR}/controls/QXDOTFNT.txt ${QX_DOTFONT_DIR}/QXDOTFNT.bmp
  DEPENDS qxdotfont ${CMAKE_CURRENT_LIST_DIR}/controls/QXDOTFNT.txt
  COMMENT "Drawing the dot-matrix font from its text form")
qt_add_resources(QXTpack qxcontrols PREFIX /qxtools BASE ${QX_DOTFONT_DIR}
                 FILES ${QX_DOTFONT_DIR}/QXDOTFNT.bmp)
