# The writer program the multi-process tests start as children.
add_executable(qx_ini_writer ${CMAKE_CURRENT_LIST_DIR}/helper/IniWriter.cpp)
target_link_libraries(qx_ini_writer PRIVATE QXTpack)
add_dependencies(test_settings qx_ini_writer)
target_compile_definitions(test_settings PRIVATE QX_INI_WRITER="$<TARGET_FILE:qx_ini_writer>")
