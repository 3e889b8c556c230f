# The agreement test decodes with giflib and runs qxtool gif2bmp.
find_package(GIF REQUIRED)
target_link_libraries(test_images PRIVATE GIF::GIF)
add_dependencies(test_images qxtool)
target_compile_definitions(test_images PRIVATE QXTOOL_PATH="$<TARGET_FILE:qxtool>")
