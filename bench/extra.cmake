# bench_gif compares the GIF decoder with giflib.
find_package(GIF REQUIRED)
target_link_libraries(bench_gif PRIVATE GIF::GIF)
target_include_directories(bench_gif PRIVATE ${PROJECT_SOURCE_DIR}/tests/images)
# bench_picbox writes its GIF pictures with the decoder tests' GIF builder.
target_sources(bench_picbox PRIVATE ${PROJECT_SOURCE_DIR}/tests/images/GifBuilder.cpp)
target_include_directories(bench_picbox PRIVATE ${PROJECT_SOURCE_DIR}/tests/images)
# bench_sound compares the WAV format reading with libsndfile.
find_package(PkgConfig REQUIRED)
pkg_check_modules(SNDFILE REQUIRED IMPORTED_TARGET sndfile)
target_link_libraries(bench_sound PRIVATE PkgConfig::SNDFILE)
# bench_find times the counters and qxtKillPath beside the walks the tests keep as references.
target_include_directories(bench_find PRIVATE ${PROJECT_SOURCE_DIR}/tests/util)
