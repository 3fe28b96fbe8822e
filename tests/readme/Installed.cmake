# Builds the packages, unpacks them, and builds and runs hosts with the unpacked files only: with CMake, with pkg-config,
# and from the compiler's command line. The Python host of bindings/python/README.md runs from its package.
# Run with -DBUILD=... -DSOURCE=... -DLIBDIR=... -DWORK=... -DCXX=... [-DPYTHON=...]

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()
function(expect text pattern what)
  if(NOT text MATCHES "${pattern}")
    message(FATAL_ERROR "${what}: ${text}")
  endif()
endfunction()

get_filename_component(cpack ${CMAKE_COMMAND} DIRECTORY)
run(${cpack}/cpack -G DEB --config ${BUILD}/CPackConfig.cmake -B ${WORK})
set(packages libgllib1 libgllib-dev gllib-glview)
if(PYTHON)
  list(APPEND packages python3-gllib)
endif()
foreach(package ${packages})
  file(GLOB file ${WORK}/${package}_*.deb)
  run(dpkg-deb --field ${file} Depends)
  set(depends_${package} "${output}")
  run(dpkg-deb --extract ${file} ${WORK}/root)
endforeach()
expect("${depends_libgllib1}" "libegl1.*libfreetype6.*libxcb1" "dependencies of libgllib1")
expect("${depends_libgllib-dev}" "^libgllib1 \\(= 1" "dependencies of libgllib-dev")
expect("${depends_gllib-glview}" "libgllib1 \\(= 1.*libassimp5" "dependencies of gllib-glview")

set(prefix ${WORK}/root/usr)
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/installed -B ${WORK}/build -DSOURCE=${SOURCE}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX})
run(${CMAKE_COMMAND} --build ${WORK}/build --parallel 2)
run(sh -c "cd ${WORK} && cp ${SOURCE} host.cpp && ${CXX} host.cpp $(pkg-config --cflags --libs gllib) -o host")
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
foreach(host build/by_package build/by_pkg_config host)
  run(${WORK}/${host})
  expect("${output}" "^255 102 0\n$" ${host})
endforeach()
if(PYTHON)
  expect("${depends_python3-gllib}" "libgllib1 \\(= 1.*python3 " "dependencies of python3-gllib")
  unset(ENV{GLLIB_MODULE})
  set(ENV{PYTHONPATH} ${prefix}/lib/python3/dist-packages)
  run(${PYTHON} -B ${prefix}/share/doc/python3-gllib/examples/triangle.py)
  expect("${output}" "^255 102 0\n$" triangle.py)
endif()

# The tool finds its module relative to its own location.
unset(ENV{LD_LIBRARY_PATH})
set(ENV{GLLIB_REGISTRY_DIR} ${WORK}/registry)
run(${prefix}/bin/gllib-register)
file(READ ${WORK}/registry/machine.reg output)
expect("${output}" "InprocServer32]\r?\n@=\"[^\"]*/root/usr/${LIBDIR}/libgllib.so.1" "the registered module")

# Builds a toolkit host from the sources in the package. Runs the viewer, which finds its module relative to its own
# location.
run(${CMAKE_COMMAND} -S ${prefix}/share/doc/libgllib-dev/examples -B ${WORK}/hosts -DGLLIB_GLVIEW=OFF
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX})
run(${CMAKE_COMMAND} --build ${WORK}/hosts --parallel 2 --target embed-gtk3)
file(WRITE ${WORK}/model.obj "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n")
run(${prefix}/bin/glview --out ${WORK}/model.png ${WORK}/model.obj)
