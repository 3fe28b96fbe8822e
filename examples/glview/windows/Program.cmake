# glview.exe: the same viewer with a native window and small readers of OBJ and STL files. The build copies the module into
# its folder.

file(GLOB GLVIEW_SOURCES CONFIGURE_DEPENDS glview/*.cpp glview/windows/*.cpp shared/model/*.cpp shared/model/plain/*.cpp
     shared/Picture.cpp)
list(FILTER GLVIEW_SOURCES EXCLUDE REGEX "/glview/(main|Window|NativeWindow|HiddenParent|ReaderProcess|ReaderChild)\\.cpp$")
add_library(glview_parts STATIC ${GLVIEW_SOURCES})
target_include_directories(glview_parts PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}
                                               $<TARGET_PROPERTY:gllib,INTERFACE_INCLUDE_DIRECTORIES>)
target_include_directories(glview_parts SYSTEM PUBLIC ${GLLIB_HEADER_LIBRARIES})
target_link_libraries(glview_parts PUBLIC opengl32 gdi32 shell32 ole32 oleaut32)
add_executable(glview glview/main.cpp)
target_link_libraries(glview PRIVATE glview_parts)
add_dependencies(glview gllib)
add_custom_command(TARGET glview POST_BUILD COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_FILE:gllib>
                                                    $<TARGET_FILE_DIR:glview> VERBATIM)
install(TARGETS glview COMPONENT glview)
if(GLLIB_TESTS)
  add_subdirectory(${PROJECT_SOURCE_DIR}/tests/examples ${PROJECT_BINARY_DIR}/tests/examples)
endif()
