# Builds the packages, unpacks them, and builds and runs hosts with the unpacked files only: with CMake, with pkg-config,
# and from the compiler's command line. The Python host of bindings/python/README.md runs from
# its package.
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
function(expect pattern what)
  if(NOT output MATCHES "${pattern}")
    message(FATAL_ERROR "${what}: ${output}")
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
set(output "${depends_libgllib1}")
expect("libegl1.*libfreetype6.*libxcb1" "what libgllib1 depends on")
set(output "${depends_libgllib-dev}")
expect("^libgllib1 \\(= 1" "what libgllib-dev depends on")

set(output "${depends_gllib-glview}")
expect("libgllib1 \\(= 1.*libassimp5" "what gllib-glview depends on")

set(prefix ${WORK}/root/usr)
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/installed -B ${WORK}/build -DSOURCE=${SOURCE}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX})
run(${CMAKE_COMMAND} --build ${WORK}/build --parallel 2)
run(sh -c "cd ${WORK} && cp ${SOURCE} host.cpp && ${CXX} host.cpp $(pkg-config --cflags --libs gllib) -o host")
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
foreach(host build/by_package build/by_pkg_config host)
  run(${WORK}/${host})
  expect("^255 102 0\n$" ${host})
endforeach()
if(PYTHON)
  set(output "${depends_python3-gllib}")
  expect("libgllib1 \\(= 1.*python3 " "what python3-gllib depends on")
  unset(ENV{GLLIB_MODULE})
  set(ENV{PYTHONPATH} ${prefix}/lib/python3/dist-packages)
  run(${PYTHON} -B ${prefix}/share/doc/python3-gllib/examples/triangle.py)
  expect("^255 102 0\n$" triangle.py)
endif()

# The tool finds its module relative to its own location.
unset(ENV{LD_LIBRARY_PATH})
set(ENV{GLLIB_REGISTRY_DIR} ${WORK}/registry)
run(${prefix}/bin/gllib-register)
file(READ ${WORK}/registry/machine.reg output)
expect("InprocServer32]\r?\n@=\"[^\"]*/root/usr/${LIBDIR}/libgllib.so.1" "the module that was registered")

# A toolkit host from the sources in the package. The viewer runs, and finds its module relative to its own location.
run(${CMAKE_COMMAND} -S ${prefix}/share/doc/libgllib-dev/examples -B ${WORK}/hosts -DGLLIB_GLVIEW=OFF
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX})
run(${CMAKE_COMMAND} --build ${WORK}/hosts --parallel 2 --target embed-gtk3)
file(WRITE ${WORK}/model.obj "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n")
run(${prefix}/bin/glview --out ${WORK}/model.png ${WORK}/model.obj)
