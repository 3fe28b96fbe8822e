# Registers the module by regsvr32, runs the host, and registers it no more: after that all classes of the registry are
# as they were. Wants RUN (a list: the runner and its prefix), MODULE, HOST and FOLDER, for the registry's copies.

function(run)
  execute_process(COMMAND ${RUN} ${ARGN} RESULT_VARIABLE result OUTPUT_QUIET)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}: ${result}")
  endif()
endfunction()

# The keys and values of all classes, those of the machine and of the user.
function(copy_classes into)
  run(reg export HKCR ${FOLDER}/classes.reg /y)
  file(STRINGS ${FOLDER}/classes.reg lines ENCODING UTF-16LE)
  set(${into} "${lines}" PARENT_SCOPE)
endfunction()

copy_classes(before)
run(regsvr32 /s ${MODULE})
copy_classes(registered)
if(registered STREQUAL before)
  message(FATAL_ERROR "regsvr32 has entered nothing")
endif()
execute_process(COMMAND ${RUN} ${HOST} --gtest_brief=1 RESULT_VARIABLE host)
run(regsvr32 /s /u ${MODULE})
copy_classes(after)
if(NOT after STREQUAL before)
  list(REMOVE_ITEM after ${before})
  message(FATAL_ERROR "regsvr32 /u has left: ${after}")
endif()
if(NOT host EQUAL 0)
  message(FATAL_ERROR "the host failed: ${host}")
endif()
