# The plugin is loaded the way Designer loads it.
find_package(Qt6 REQUIRED COMPONENTS UiPlugin)
target_link_libraries(test_designer PRIVATE Qt6::UiPlugin)
target_compile_definitions(test_designer PRIVATE QX_DESIGNER_PLUGIN="$<TARGET_FILE:qxtools_designer>")
add_dependencies(test_designer qxtools_designer)
