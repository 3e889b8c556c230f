# The picture box tests read the Windows programs the version tests build.
add_dependencies(test_picbox test_version_pe)
target_compile_definitions(test_picbox PRIVATE QX_PE_DIR="${CMAKE_CURRENT_BINARY_DIR}/version-pe")
