# bench_gif compares the GIF decoder with giflib.
find_package(GIF REQUIRED)
target_link_libraries(bench_gif PRIVATE GIF::GIF)
target_include_directories(bench_gif PRIVATE ${PROJECT_SOURCE_DIR}/tests/images)
