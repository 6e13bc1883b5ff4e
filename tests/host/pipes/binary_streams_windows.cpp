// Here standard streams would translate line ends, and take a control byte for the end.

#include "binary_streams.h"

#include <cstdio>
#include <initializer_list>

#include <fcntl.h>
#include <io.h>

void binaryStandardStreams() {
    for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
}
