#pragma once

// Loading picture files from memory and disk, for the tests of their formats.

#include "plush/pmg.h"
#include "plush/png.h"
#include "plush/png_load.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace formats_test {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

inline const fs::path corpus = VELMARIS_FORMATS_CORPUS;

inline Bytes readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void writeFile(const fs::path& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

/// The corpus's files of a folder; with an extension, those only.
inline std::vector<fs::path> filesIn(const std::string& folder, const std::string& extension = {}) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(corpus / folder)) {
        const std::string own = entry.path().extension().string();
        if (own != ".rgba" && (extension.empty() || own == extension)) files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

/// The picture in the bytes of a file, by the loader that its extension asks for; its size must go with its pixels.
inline std::optional<Bytes> loadedPixels(const Bytes& file, const std::string& extension) {
    if (extension == ".pmg") {
        const OwnedImage image = readPMG(file);
        if (!image) return std::nullopt;
        const auto size = static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height);
        return image->pixels ? Bytes(image->pixels, image->pixels + size * bytesPerPixel) : Bytes();
    }
    wm::png::Image image;
    if (!wm::png::load_memory(file.data(), file.size(), image)) return std::nullopt;
    const auto size = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    if (image.pixels.size() != size * wm::png::rgbaSize) throw std::logic_error("the pixels are not of the size");
    return image.pixels;
}

/// The largest difference of any byte; 256 for another size. Of pixels that nobody sees only alpha counts.
inline int difference(const Bytes& ours, const Bytes& theirs) {
    if (ours.size() != theirs.size()) return 256;
    int largest = 0;
    for (std::size_t at = 0; at < ours.size(); ++at) {
        const std::size_t alpha = at | 3;
        if (at != alpha && ours[alpha] == 0 && theirs[alpha] == 0) continue;
        largest = std::max(largest, std::abs(ours[at] - theirs[at]));
    }
    return largest;
}

/// Loads a file that may say anything, but no picture that would take long to fill. False if there is none.
inline bool isLoaded(const Bytes& file, const std::string& extension) {
    constexpr std::int64_t mostPixels = 1 << 16;
    if (extension == ".pmg") return readPMG(file) != nullptr;
    Bytes pixels;
    return wm::png::decode_picture(file, [&pixels](std::int32_t width, std::int32_t height) {
        if (std::int64_t{width} * height > mostPixels) throw std::bad_alloc();
        pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * wm::png::rgbaSize);
        return pixels.data();
    });
}

/// A directory that lives as long as the test that asked for it.
class TemporaryDirectory {
public:
    TemporaryDirectory()
        : path_(fs::temp_directory_path() / ("velmaris_formats_" + std::to_string(std::random_device{}()))) {
        fs::create_directory(path_);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    std::string path(const std::string& name) const { return (path_ / name).string(); }

private:
    fs::path path_;
};

} // namespace formats_test
