# The picture tests read the Windows programs the version tests build.
add_dependencies(test_pictures test_version_pe)
target_compile_definitions(test_pictures PRIVATE QX_PE_DIR="${CMAKE_CURRENT_BINARY_DIR}/version-pe")
