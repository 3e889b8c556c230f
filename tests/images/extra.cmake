# The agreement test decodes with giflib.
find_package(GIF REQUIRED)
target_link_libraries(test_images PRIVATE GIF::GIF)
