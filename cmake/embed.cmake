# Turns a file into a C++ source that gives its bytes.
#
#   cmake -DINPUT=FILE -DOUTPUT=FILE.cpp -DHEADER=room/header.h -DFUNCTION=name -P embed.cmake
#
# The bytes are written as one string literal, which compilers swallow at once, where an array of numbers of the same
# size takes them seconds. Every byte is an escape sequence, so none can run into its neighbour.
file(READ ${INPUT} bytes HEX)
string(LENGTH "${bytes}" digits)
math(EXPR size "${digits} / 2")

string(REPEAT "[0-9a-f]" 64 row)
string(REGEX REPLACE "(${row})" "\\1\n" bytes "${bytes}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" bytes "${bytes}")
string(REGEX REPLACE "\n$" "" bytes "${bytes}")
string(REPLACE "\n" "\"\n    \"" bytes "${bytes}")

get_filename_component(name ${INPUT} NAME)
file(WRITE ${OUTPUT} "// Made from ${name} by the build.
#include \"${HEADER}\"

namespace {

constexpr unsigned char bytes[${size} + 1] =
    \"${bytes}\";

} // namespace

std::span<const unsigned char> ${FUNCTION}() { return {bytes, ${size}}; }
")
