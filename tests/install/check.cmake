# Installs the build into a scratch prefix and builds and runs an outside project against it.
# Called with -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=...
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix
                RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "install failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR}/consumer -B ${WORK_DIR}/build
                        -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "find_package(QXTools) failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "the outside project did not build")
endif()
execute_process(COMMAND ${WORK_DIR}/build/consumer RESULT_VARIABLE rc OUTPUT_VARIABLE out)
if(rc OR NOT out STREQUAL "a,b,c b\n")
  message(FATAL_ERROR "the outside program printed '${out}' and exited ${rc}")
endif()
