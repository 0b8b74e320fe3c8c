# Runs a program with one command line and compares its exit status and its
# whole output with what is expected.
# Arguments: -DPROGRAM=<path> -DARGS=<arguments separated by |>
#            -DEXPECTED=<file> -DSTATUS=<exit status>
string(REPLACE "|" ";" arguments "${ARGS}")
execute_process(COMMAND ${PROGRAM} ${arguments} OUTPUT_VARIABLE output RESULT_VARIABLE status)
if(NOT status EQUAL STATUS)
  message(FATAL_ERROR "${PROGRAM} exited with ${status}, expected ${STATUS}")
endif()
file(READ ${EXPECTED} expected)
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "Output of ${PROGRAM} differs.\n--- expected\n${expected}--- actual\n${output}")
endif()
