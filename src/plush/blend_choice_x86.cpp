// Which wider vectors an x86 processor has for blending.

#include "plush/blend_avx2.h"

BlendRow* widestBlendRow() { return __builtin_cpu_supports("avx2") ? &blendRowByEights : &blendRowByFours; }
