# Registers the module by regsvr32, runs the host, and registers it no more: after that no class of it is to be found.
# Wants RUN (a list: the runner and its prefix), MODULE and HOST.

function(step expected)
  execute_process(COMMAND ${RUN} ${ARGN} RESULT_VARIABLE result)
  if(expected STREQUAL "works" AND NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}: ${result}")
  elseif(expected STREQUAL "fails" AND result EQUAL 0)
    message(FATAL_ERROR "${ARGN} found what should be gone")
  endif()
endfunction()

set(keys HKCR\\Gl.GLContext.1 HKCR\\Gl.GLCanvas "HKCR\\CLSID\\{1750378D-FDFD-11D3-A317-000000000000}"
         "HKCR\\TypeLib\\{17503780-FDFD-11D3-A317-000000000000}")
step(works regsvr32 /s ${MODULE})
foreach(key ${keys})
  step(works reg query ${key})
endforeach()
execute_process(COMMAND ${RUN} ${HOST} RESULT_VARIABLE host)
step(works regsvr32 /s /u ${MODULE})
foreach(key ${keys})
  step(fails reg query ${key})
endforeach()
if(NOT host EQUAL 0)
  message(FATAL_ERROR "the host failed: ${host}")
endif()
