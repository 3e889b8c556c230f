# The form is written by Designer's own form-editor core (libQt6DesignerComponents has no CMake
# target of its own outside Qt's private packages) and read back by QUiLoader, both finding the
# plugin where the build puts it.
find_package(Qt6 REQUIRED COMPONENTS UiPlugin Designer UiTools)
find_library(QX_DESIGNER_COMPONENTS Qt6DesignerComponents REQUIRED)
target_link_libraries(test_forms PRIVATE Qt6::UiPlugin Qt6::Designer Qt6::UiTools
                                         ${QX_DESIGNER_COMPONENTS})
target_compile_definitions(test_forms PRIVATE QX_DESIGNER_PLUGIN="$<TARGET_FILE:qxtools_designer>"
                                              QX_FORM_ARTEFACT="${CMAKE_CURRENT_BINARY_DIR}/forms-all-widgets.ui")
add_dependencies(test_forms qxtools_designer)
