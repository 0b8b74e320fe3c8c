# Script run by the "package" test: stage an installation, build the examples
# against it as an outside project would, run them and check tyx.pc. The
# consumer sets no language standard of its own: the package must carry it.

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "Command failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${TYX_STAGE_DIR} ${TYX_CONSUMER_DIR})
run(${CMAKE_COMMAND} --install ${TYX_BUILD_DIR} --prefix ${TYX_STAGE_DIR})

foreach(required include/tyx/TyxGlobal.h include/tyx/TyxString.h)
  if(NOT EXISTS ${TYX_STAGE_DIR}/${required})
    message(FATAL_ERROR "Missing from the installation: ${required}")
  endif()
endforeach()
file(GLOB_RECURSE libs ${TYX_STAGE_DIR}/lib*/libtyx.so*)
set(names "")
foreach(lib IN LISTS libs)
  get_filename_component(name ${lib} NAME)
  list(APPEND names ${name})
endforeach()
list(SORT names)
set(expected libtyx.so libtyx.so.${TYX_SOVERSION} libtyx.so.${TYX_VERSION})
if(NOT names STREQUAL expected)
  message(FATAL_ERROR "Expected ${expected}, found: ${names}")
endif()

run(${CMAKE_COMMAND} -S ${TYX_EXAMPLES_DIR} -B ${TYX_CONSUMER_DIR} -G ${TYX_GENERATOR}
    -DCMAKE_PREFIX_PATH=${TYX_STAGE_DIR} -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_CXX_COMPILER=${TYX_CXX_COMPILER}
    "-DCMAKE_CXX_FLAGS=${TYX_CONSUMER_FLAGS}")
run(${CMAKE_COMMAND} --build ${TYX_CONSUMER_DIR})
run(${TYX_CONSUMER_DIR}/tyx-example)

find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  file(GLOB_RECURSE pcfile ${TYX_STAGE_DIR}/*/tyx.pc)
  get_filename_component(pcdir "${pcfile}" DIRECTORY)
  set(ENV{PKG_CONFIG_PATH} ${pcdir})
  run(${PKG_CONFIG} --modversion tyx)
  string(STRIP "${last_output}" version)
  if(NOT version STREQUAL TYX_VERSION)
    message(FATAL_ERROR "tyx.pc reports version '${version}'")
  endif()
  run(${PKG_CONFIG} --cflags --libs tyx)
  string(STRIP "${last_output}" flags)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  separate_arguments(consumer_flags UNIX_COMMAND "${TYX_CONSUMER_FLAGS}")
  run(${TYX_CXX_COMPILER} ${consumer_flags} ${TYX_EXAMPLES_DIR}/main.cpp ${flags}
      -o ${TYX_CONSUMER_DIR}/tyx-example-pc)
  run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${pcdir}/.. ${TYX_CONSUMER_DIR}/tyx-example-pc)
endif()
