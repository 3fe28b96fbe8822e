# glview.exe: the same viewer with a window of the system's own, the system's coder of PNG files, and a small reader of
# OBJ and STL files. The module lies beside it.

file(GLOB GLVIEW_SOURCES CONFIGURE_DEPENDS glview/*.cpp glview/windows/*.cpp shared/model/*.cpp shared/model/plain/*.cpp
     shared/windows/*.cpp)
list(FILTER GLVIEW_SOURCES EXCLUDE REGEX "/glview/(Window|NativeWindow|HiddenParent)\\.cpp$")
add_executable(glview ${GLVIEW_SOURCES})
target_include_directories(glview PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} $<TARGET_PROPERTY:gllib,INTERFACE_INCLUDE_DIRECTORIES>)
target_link_libraries(glview PRIVATE opengl32 gdi32 gdiplus shell32 shlwapi ole32 oleaut32)
add_dependencies(glview gllib)
add_custom_command(TARGET glview POST_BUILD COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_FILE:gllib>
                                                    $<TARGET_FILE_DIR:glview> VERBATIM)
install(TARGETS glview COMPONENT glview)
