# Compiler flags of all targets: strict warnings, hidden symbols, and the sanitizers of the preset.

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Werror -fvisibility=hidden
                    -fvisibility-inlines-hidden)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  add_compile_options(-Wno-sign-conversion)  # in g++ this is not part of -Wconversion
endif()
if(GLLIB_SANITIZE)
  add_compile_options(-fsanitize=${GLLIB_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${GLLIB_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-maybe-uninitialized)  # false warnings in instrumented std::regex
  endif()
endif()
find_program(GLLIB_CCACHE ccache)
if(GLLIB_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${GLLIB_CCACHE})
endif()
