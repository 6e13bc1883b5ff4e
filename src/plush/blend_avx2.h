#pragma once

// The blend of rows for x86 processors with AVX2. On others it must not be called.

#include "plush/blend.h"

BlendRow blendRowByEights;
