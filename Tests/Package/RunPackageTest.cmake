# Installs the build tree into a scratch prefix, then builds and runs a consumer
# that knows nothing but that prefix.
file(REMOVE_RECURSE ${WORK})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK}/prefix
  RESULT_VARIABLE Result OUTPUT_QUIET)
if(NOT Result EQUAL 0)
  message(FATAL_ERROR "install failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${CONSUMER} -B ${WORK}/build -G Ninja
  -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_CXX_COMPILER=${CXX}
  RESULT_VARIABLE Result)
if(NOT Result EQUAL 0)
  message(FATAL_ERROR "consumer configure failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK}/build RESULT_VARIABLE Result)
if(NOT Result EQUAL 0)
  message(FATAL_ERROR "consumer build failed")
endif()
# Run without LD_LIBRARY_PATH: the installed libraries must be found through RPATH.
execute_process(COMMAND ${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH ${WORK}/build/app RESULT_VARIABLE Result)
if(NOT Result EQUAL 0)
  message(FATAL_ERROR "consumer run failed (exit ${Result})")
endif()
