#pragma once

// The size of the pictures that the scene renderers draw. It follows the image that was loaded last, so that a game
// which loads its frame image from a file renders in that size.

/// In pixels.
struct RenderSize {
    int width = 0;
    int height = 0;
};

inline RenderSize renderSize;
