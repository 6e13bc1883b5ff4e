// Files that are read in one piece.
//
// The size is not asked for: files of the kind that grow while they are read, or that tell no size, are read as well.

#include "host/whole_file.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>

namespace {

constexpr std::size_t blockSize = std::size_t{64} << 10;  // bytes
constexpr std::size_t maximumSize = std::size_t{1} << 30; // bytes

} // namespace

std::optional<std::string> readWholeFile(const std::string& filePath) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(filePath.c_str(), "rb"), &std::fclose);
    if (!file) return std::nullopt;
    std::string bytes;
    std::array<char, blockSize> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
        if (bytes.size() + count > maximumSize) return std::nullopt;
        bytes.append(block.data(), count);
    }
    if (std::ferror(file.get()) != 0) return std::nullopt;
    return bytes;
}
