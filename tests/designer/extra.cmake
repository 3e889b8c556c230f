# The plugin is loaded the way Designer loads it, and looked at through Designer's own form
# editor core (libQt6DesignerComponents has no CMake target of its own outside Qt's private
# packages). The palette's contact sheet is written beside the test program.
find_package(Qt6 REQUIRED COMPONENTS UiPlugin Designer Xml)
find_library(QX_DESIGNER_COMPONENTS Qt6DesignerComponents REQUIRED)
target_link_libraries(test_designer PRIVATE Qt6::UiPlugin Qt6::Designer Qt6::Xml
                                            ${QX_DESIGNER_COMPONENTS})
target_compile_definitions(test_designer PRIVATE QX_DESIGNER_PLUGIN="$<TARGET_FILE:qxtools_designer>"
                                                 QX_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                                                 QX_ARTEFACT_DIR="${CMAKE_CURRENT_BINARY_DIR}")
add_dependencies(test_designer qxtools_designer)
