# What every target of ours compiles with: warnings as errors, and the sanitizers of the preset.
add_library(velmaris_warnings INTERFACE)
target_compile_options(velmaris_warnings INTERFACE -Wall -Wextra -Wshadow -Wconversion -Wno-sign-conversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees faults that are none in the copies inside inlined standard strings and vectors.
  target_compile_options(velmaris_warnings INTERFACE -Wno-restrict -Wno-stringop-overflow)
endif()
if(VELMARIS_SANITIZE)
  # GCC 12 reports false "maybe uninitialized" reads in instrumented standard containers.
  target_compile_options(velmaris_warnings INTERFACE
    -fsanitize=${VELMARIS_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(velmaris_warnings INTERFACE -fsanitize=${VELMARIS_SANITIZE})
endif()

# velmaris_room(NAME SOURCES ... KNOWS ...): a static library whose headers are reached as "room/header.h".
function(velmaris_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;KNOWS" ${ARGN})
  add_library(velmaris_${name} STATIC ${ROOM_SOURCES})
  target_include_directories(velmaris_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(velmaris_${name} PUBLIC ${ROOM_KNOWS} Threads::Threads PRIVATE velmaris_warnings)
endfunction()
