#pragma once

/// Makes the standard streams pass bytes as they are.
void binaryStandardStreams();
