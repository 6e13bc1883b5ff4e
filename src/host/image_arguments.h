#pragma once

// Reading image handles from the arguments of native functions.

#include "host/binding.h"
#include "plush/image.h"

/// The image of a handle, whatever state it is in; null for nil. Only to be compared or looked up, not to be read.
PlushImage* imageHandle(const Arguments& arguments, std::size_t index, std::string_view name);

/// The image of a handle, with pixels; else fails with `name` + " must be a valid image". A handle of an image that
/// was freed is no longer one.
PlushImage& pixelImage(const Arguments& arguments, std::size_t index, std::string_view name);

/// The image of a handle; null for nil and for a handle of an image that was freed.
PlushImage* liveImage(const Arguments& arguments, std::size_t index, std::string_view name);

/// Fails because an image would become larger than an image may be.
[[noreturn]] void failAsTooLarge(const Arguments& arguments);
