# The qxtool tests run the built program.
add_dependencies(test_files qxtool)
target_compile_definitions(test_files PRIVATE QXTOOL_EXE="$<TARGET_FILE:qxtool>")
