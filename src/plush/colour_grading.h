#pragma once

// How much each colour counts.

/// Two factors for each colour; their product is its weight. With those given here, full white comes to about 2.447
/// times 255.
struct ColourGrading {
    float red1 = 0.55F;
    float red2 = 1.0F;
    float green1 = 0.65F;
    float green2 = 1.457F;
    float blue1 = 0.475F;
    float blue2 = 2.0F;
};

/// The grading that holds for everything drawn.
inline ColourGrading colourGrading;
