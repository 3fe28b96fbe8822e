# gllib_type_library(FILE): adds a rule that compiles src/component/GLLib.idl to the type library FILE.
# Sets GLLIB_TYPE_LIBRARY_TOOLS to ON if all inputs exist: widl, the imported interfaces, and the imported type library
# (packages mingw-w64-tools and libwine-dev).

find_program(GLLIB_WIDL NAMES x86_64-w64-mingw32-widl widl NO_CMAKE_FIND_ROOT_PATH)
find_path(GLLIB_WIDL_IMPORTS unknwn.idl NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/include/wine/wine/windows /usr/include/wine/windows)
find_path(GLLIB_WIDL_LIBRARIES stdole2.tlb NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/wine/x86_64-windows)
mark_as_advanced(GLLIB_WIDL GLLIB_WIDL_IMPORTS GLLIB_WIDL_LIBRARIES)
if(GLLIB_WIDL AND GLLIB_WIDL_IMPORTS AND GLLIB_WIDL_LIBRARIES)
  set(GLLIB_TYPE_LIBRARY_TOOLS ON)
else()
  set(GLLIB_TYPE_LIBRARY_TOOLS OFF)
endif()

function(gllib_type_library file)
  set(source ${PROJECT_SOURCE_DIR}/src/component/GLLib.idl)
  add_custom_command(
    OUTPUT ${file}
    COMMAND ${GLLIB_WIDL} -t --win64 -I ${GLLIB_WIDL_IMPORTS} -L ${GLLIB_WIDL_LIBRARIES} -o ${file} ${source}
    DEPENDS ${source}
    COMMENT "Generating the type library"
    VERBATIM)
endfunction()
