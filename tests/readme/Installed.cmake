# Installs into a folder of its own and builds and runs a host against what is there.
# Run with -DBUILD=... -DSOURCE=... -DLIBDIR=... -DWORK=...

file(REMOVE_RECURSE ${WORK})
function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

set(ENV{PKG_CONFIG_PATH} ${WORK}/prefix/${LIBDIR}/pkgconfig)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/installed -B ${WORK}/build -DSOURCE=${SOURCE}
    -DCMAKE_PREFIX_PATH=${WORK}/prefix)
run(${CMAKE_COMMAND} --build ${WORK}/build)
foreach(host by_package by_pkg_config)
  run(${WORK}/build/${host})
  if(NOT output STREQUAL "255 102 0\n")
    message(FATAL_ERROR "${host}: ${output}")
  endif()
endforeach()
