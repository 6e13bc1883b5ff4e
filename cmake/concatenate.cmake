# Joins text files to one, in the order given.
#
#   cmake -DOUTPUT=FILE -P concatenate.cmake -- FILE...
set(text "")
set(isInput FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
  if(isInput)
    file(READ "${CMAKE_ARGV${i}}" part)
    string(APPEND text "${part}")
  elseif("${CMAKE_ARGV${i}}" STREQUAL "--")
    set(isInput TRUE)
  endif()
endforeach()
file(WRITE ${OUTPUT} "${text}")
