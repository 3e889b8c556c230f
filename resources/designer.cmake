# The palette pictures of the widget classes are drawn in code (resources/designer/paletteart.cpp), so a
# picture is mended by editing its drawing; a small host program renders each at 22 and 44
# pixels at build time, with the resource list naming each after its class in upper case
# (":/qxtools/palette/22/TQXGAUGE"). They live in the library rather than in the Designer
# plugin so that the gallery and the tests reach them without loading Designer.
add_executable(qxpaletteart ${CMAKE_CURRENT_LIST_DIR}/designer/paletteart.cpp)
target_link_libraries(qxpaletteart PRIVATE Qt6::Gui)
set(QX_PALETTE_DIR ${CMAKE_CURRENT_BINARY_DIR}/resources/palette)
add_custom_command(
  OUTPUT ${QX_PALETTE_DIR}/qrc_palette.cpp
  COMMAND qxpaletteart ${QX_PALETTE_DIR}
  COMMAND Qt6::rcc --name qxpalette -o ${QX_PALETTE_DIR}/qrc_palette.cpp ${QX_PALETTE_DIR}/palette.qrc
  DEPENDS qxpaletteart
  COMMENT "Drawing the palette pictures of the widget classes")
set_source_files_properties(${QX_PALETTE_DIR}/qrc_palette.cpp PROPERTIES GENERATED ON
                                                                          SKIP_AUTOGEN ON)
target_sources(QXTpack PRIVATE ${QX_PALETTE_DIR}/qrc_palette.cpp)
