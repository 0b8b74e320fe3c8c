# Runs one example program and compares its whole output with a file.
# Arguments: -DPROGRAM=<path> -DEXPECTED=<file>
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE output RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} exited with ${status}")
endif()
file(READ ${EXPECTED} expected)
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "Output of ${PROGRAM} differs.\n--- expected\n${expected}--- actual\n${output}")
endif()
