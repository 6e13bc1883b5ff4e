// Here all streams pass bytes as they are.

#include "binary_streams.h"

void binaryStandardStreams() {}
