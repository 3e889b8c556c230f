# The window functions once more on a real X server, where they go through xcb.
find_program(XVFB_RUN xvfb-run)
if(XVFB_RUN)
  add_test(NAME system_x11
           COMMAND ${XVFB_RUN} -a $<TARGET_FILE:test_system> --gtest_filter=SystemWindows.*)
  set_tests_properties(system_x11 PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=xcb" TIMEOUT 300)
endif()
# qxdemo plays the other program whose window is searched and closed.
add_dependencies(test_system qxdemo)
target_compile_definitions(test_system PRIVATE QXDEMO_PROGRAM="$<TARGET_FILE:qxdemo>")
