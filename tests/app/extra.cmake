# Key presses, clicks and pointer moves come from Qt's test library.
find_package(Qt6 REQUIRED COMPONENTS Test)
target_link_libraries(test_app PRIVATE Qt6::Test)
# Pictures the hint tests leave for a person to look at.
target_compile_definitions(test_app PRIVATE
                           QXT_ARTEFACT_DIR="${CMAKE_CURRENT_BINARY_DIR}/app-artefacts")
# The hint once more on a real X server: hovering, the screen behind the bubble, the edges.
find_program(XVFB_RUN xvfb-run)
if(XVFB_RUN)
  add_test(NAME app_x11
           COMMAND ${XVFB_RUN} -a -s "-screen 0 1024x768x24"
                   $<TARGET_FILE:test_app> --gtest_filter=HintX11.*)
  set_tests_properties(app_x11 PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=xcb" TIMEOUT 300)
endif()
