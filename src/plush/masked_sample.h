#pragma once

// One sample of a pixel that is a single number: the bits under a mask, scaled to eight bits.

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace wm::png {

/// The value `sample` of 0 to `largest`, scaled to 0 to 255 and rounded.
constexpr std::uint8_t scale_masked_sample(std::uint32_t sample, std::uint32_t largest) {
    return static_cast<std::uint8_t>((std::uint64_t{sample} * 255 + largest / 2) / largest);
}

/// Takes the sample under a mask out of pixels. A mask may have any bits; without bits every sample is 0.
class MaskedSample {
public:
    explicit MaskedSample(std::uint32_t mask)
        : mask_(mask), shift_(mask == 0 ? 0 : static_cast<unsigned>(std::countr_zero(mask))), largest_(mask >> shift_) {
        if (mask == 0) return;
        const std::uint32_t last = std::min(largest_, tableSize - 1);
        for (std::uint32_t sample = 0; sample <= last; ++sample) table_[sample] = scale_masked_sample(sample, largest_);
    }

    std::uint8_t of(std::uint32_t pixel) const {
        const std::uint32_t sample = (pixel & mask_) >> shift_;
        return sample < tableSize ? table_[sample] : scale_masked_sample(sample, largest_);
    }

private:
    static constexpr std::uint32_t tableSize = 256;

    std::uint32_t mask_;
    unsigned shift_;
    std::uint32_t largest_;
    std::array<std::uint8_t, tableSize> table_{}; // of the samples up to 255, which are all there are in most files
};

} // namespace wm::png
