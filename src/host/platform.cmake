# The platform boundary as a library of its own: the files that need no platform, and the ones of the platform that
# is built for. Included by this folder's CMakeLists.txt.
if(WIN32)
  velmaris_room(platform
    SOURCES presentation.cpp wm_common.cpp windows_window.cpp windows_process.cpp
    KNOWS velmaris_plush)
  target_link_libraries(velmaris_platform PUBLIC gdi32 user32 advapi32)
else()
  # SDL2's headers only: the library itself is loaded when the first window is made, see sdl_window.cpp.
  find_package(SDL2 REQUIRED)
  velmaris_room(platform
    SOURCES presentation.cpp wm_common.cpp sdl_window.cpp posix_process.cpp
    KNOWS velmaris_plush)
  target_include_directories(velmaris_platform SYSTEM PRIVATE
    $<TARGET_PROPERTY:SDL2::SDL2,INTERFACE_INCLUDE_DIRECTORIES>)
  target_link_libraries(velmaris_platform PUBLIC ${CMAKE_DL_LIBS})
endif()
