# qxdemo is run as users run it; its window icon is drawn by a file of its own, built in here.
target_sources(test_demo PRIVATE ${CMAKE_SOURCE_DIR}/demo/AppIcon.cpp)
target_include_directories(test_demo PRIVATE ${CMAKE_SOURCE_DIR}/demo)
add_dependencies(test_demo qxdemo)
target_compile_definitions(test_demo PRIVATE QXDEMO_PROGRAM="$<TARGET_FILE:qxdemo>")
