# bench_gif compares the GIF decoder with giflib.
find_package(GIF REQUIRED)
target_link_libraries(bench_gif PRIVATE GIF::GIF)
target_include_directories(bench_gif PRIVATE ${PROJECT_SOURCE_DIR}/tests/images)
# bench_picbox writes its GIF pictures with the decoder tests' GIF builder.
target_sources(bench_picbox PRIVATE ${PROJECT_SOURCE_DIR}/tests/images/GifBuilder.cpp)
target_include_directories(bench_picbox PRIVATE ${PROJECT_SOURCE_DIR}/tests/images)
