# Every examples/<family>.cpp is a program of its own, built against the library the way a user
# builds it: its <qxtools/...> includes reach the public headers through forwarding headers.
set(QX_EXAMPLES_INCLUDE ${CMAKE_CURRENT_BINARY_DIR}/examples-include)
foreach(header IN LISTS QX_PUBLIC_HEADERS)
  get_filename_component(header_name ${header} NAME)
  file(CONFIGURE OUTPUT ${QX_EXAMPLES_INCLUDE}/qxtools/${header_name}
       CONTENT "#include \"${header}\"\n")
endforeach()
file(GLOB QX_EXAMPLES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/examples/*.cpp)
foreach(example IN LISTS QX_EXAMPLES)
  get_filename_component(example_name ${example} NAME_WE)
  add_executable(example_${example_name} ${example})
  target_include_directories(example_${example_name} PRIVATE ${QX_EXAMPLES_INCLUDE})
  target_link_libraries(example_${example_name} PRIVATE QXTpack)
  set_target_properties(example_${example_name} PROPERTIES
                        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/examples)
  add_dependencies(test_examples example_${example_name})
endforeach()
# The forms example loads a form with QUiLoader and the Designer plugin.
find_package(Qt6 REQUIRED COMPONENTS UiTools)
target_link_libraries(example_forms PRIVATE Qt6::UiTools)
if(TARGET qxtools_designer)
  add_dependencies(test_examples qxtools_designer)
  target_compile_definitions(test_examples PRIVATE
                             QX_DESIGNER_PLUGIN_DIR="$<TARGET_FILE_DIR:qxtools_designer>")
endif()
target_compile_definitions(test_examples PRIVATE
                           QX_EXAMPLES_BIN="${CMAKE_CURRENT_BINARY_DIR}/examples"
                           QX_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
# The sound example is fed files built by the sound tests' file builder.
target_sources(test_examples PRIVATE ${CMAKE_SOURCE_DIR}/tests/sound/SoundBuilder.cpp)
target_include_directories(test_examples PRIVATE ${CMAKE_SOURCE_DIR}/tests/sound)
