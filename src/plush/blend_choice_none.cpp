// No wider vectors for blending: the compiler's sixteen bytes are what this kind of processor has.

#include "plush/blend.h"

BlendRow* widestBlendRow() { return &blendRowByFours; }
