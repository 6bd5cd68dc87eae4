file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
if(EXISTS ${SEEDS})
  file(COPY ${SEEDS}/ DESTINATION ${SCRATCH})
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E env LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_LIST_DIR}/lsan.supp
                        ${FUZZER} -max_total_time=${SECONDS} -rss_limit_mb=2048 -timeout=10 -print_final_stats=1 ${SCRATCH}
  RESULT_VARIABLE Result)
if(NOT Result EQUAL 0)
  message(FATAL_ERROR "${FUZZER} found a failing input (exit ${Result})")
endif()
