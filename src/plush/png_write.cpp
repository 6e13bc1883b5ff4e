// The PNG writer.
//
// Rows are filtered as for compression and then stored as they are: a file is as large as its picture, and takes no
// longer to write than to filter and sum up. Whoever wants it small can run it through any optimiser.
//
// The data go through one buffer. It receives filtered rows cut into stored blocks, and whenever it is full it becomes
// an IDAT chunk, so a picture of any size needs no more memory than that.

#include "plush/png_write.h"

#include "plush/png.h"
#include "plush/png_checksums.h"
#include "plush/png_chunks.h"
#include "plush/png_filters.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace wm::png {

namespace {

constexpr std::size_t longestStoredBlock = 65535; // bytes
constexpr std::size_t blockHeaderSize = 5;
constexpr std::size_t adlerSize = 4;
constexpr std::uint8_t rgbaDepth = 8; // bits
constexpr std::uint64_t longestChunk = std::numeric_limits<std::int32_t>::max();

// The two bytes in front of a zlib stream: deflate with the largest window, least effort, no dictionary.
constexpr std::array<std::uint8_t, 2> zlibHeader = {0x78, 0x01};

void put16le(std::uint8_t* to, std::uint32_t value) {
    to[0] = static_cast<std::uint8_t>(value);
    to[1] = static_cast<std::uint8_t>(value >> 8);
}

void put32be(std::uint8_t* to, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) to[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

bool writeBytes(std::FILE* file, const std::uint8_t* data, std::size_t size) {
    return size == 0 || std::fwrite(data, 1, size, file) == size;
}

/// The size of a zlib stream that stores `size` bytes.
constexpr std::uint64_t storedSize(std::uint64_t size) {
    const std::uint64_t blocks = (size + longestStoredBlock - 1) / longestStoredBlock;
    return zlibHeader.size() + blocks * blockHeaderSize + size + adlerSize;
}

/// Stores bytes in zlib form and writes them as IDAT chunks. The number of bytes is known beforehand, since the last
/// block has to say that it is the last.
class ImageDataWriter {
public:
    ImageDataWriter(std::FILE* file, std::uint64_t size)
        : file_(file), left_(size),
          capacity_(static_cast<std::size_t>(std::min<std::uint64_t>(storedSize(size), imageDataBatch))),
          batch_(std::make_unique_for_overwrite<std::uint8_t[]>(capacity_)) {
        put(zlibHeader.data(), zlibHeader.size());
    }

    void add(const std::uint8_t* data, std::size_t size) {
        adler_ = adler32(data, size, adler_);
        while (size > 0) {
            if (blockLeft_ == 0) beginBlock();
            const std::size_t part = std::min(size, blockLeft_);
            put(data, part);
            data += part;
            size -= part;
            blockLeft_ -= part;
        }
    }

    /// Ends the stream. False if anything could not be written.
    bool finish() {
        std::array<std::uint8_t, adlerSize> sum{};
        put32be(sum.data(), adler_);
        put(sum.data(), sum.size());
        flush();
        return good_;
    }

private:
    void beginBlock() {
        blockLeft_ = static_cast<std::size_t>(std::min<std::uint64_t>(left_, longestStoredBlock));
        left_ -= blockLeft_;
        const auto length = static_cast<std::uint32_t>(blockLeft_);
        std::array<std::uint8_t, blockHeaderSize> header{}; // the type of a stored block is 0
        header[0] = left_ == 0 ? 1 : 0;
        put16le(&header[1], length);
        put16le(&header[3], ~length);
        put(header.data(), header.size());
    }

    void put(const std::uint8_t* data, std::size_t size) {
        while (size > 0) {
            if (used_ == capacity_) flush();
            const std::size_t part = std::min(size, capacity_ - used_);
            std::memcpy(batch_.get() + used_, data, part);
            used_ += part;
            data += part;
            size -= part;
        }
    }

    void flush() {
        good_ = good_ && write_chunk(file_, chunk::imageData, batch_.get(), used_);
        used_ = 0;
    }

    std::FILE* file_;
    std::uint64_t left_;        // bytes that no block has been begun for
    std::size_t blockLeft_ = 0; // bytes that the block at hand still takes
    std::uint32_t adler_ = adlerOfNothing;
    std::size_t capacity_; // bytes of a batch
    std::unique_ptr<std::uint8_t[]> batch_;
    std::size_t used_ = 0;
    bool good_ = true;
};

bool writeHeader(std::FILE* file, std::uint32_t width, std::uint32_t height) {
    std::array<std::uint8_t, 13> header{}; // compression, filter method and interlacing are 0
    put32be(&header[0], width);
    put32be(&header[4], height);
    header[8] = rgbaDepth;
    header[9] = rgba;
    return writeBytes(file, pngSignature.data(), pngSignature.size()) &&
           write_chunk(file, chunk::header, header.data(), header.size());
}

bool writePixels(std::FILE* file, const std::uint8_t* pixels, std::size_t width, std::size_t height) {
    const std::size_t rowBytes = width * rgbaSize;
    const std::vector<std::uint8_t> zeros(rowBytes);
    const auto filtered = std::make_unique_for_overwrite<std::uint8_t[]>(1 + rowBytes);
    ImageDataWriter writer(file, (1 + std::uint64_t{rowBytes}) * height);
    const std::uint8_t* above = zeros.data();
    for (std::size_t y = 0; y < height; ++y) {
        const std::uint8_t* row = pixels + y * rowBytes;
        filter_rgba_row_to(filtered.get(), row, above, rowBytes);
        writer.add(filtered.get(), 1 + rowBytes);
        above = row;
    }
    return writer.finish();
}

} // namespace

bool write_chunk(std::FILE* file, std::string_view type, const std::uint8_t* data, std::size_t size) {
    if (size > longestChunk) return false;
    std::array<std::uint8_t, 8> start{};
    put32be(&start[0], static_cast<std::uint32_t>(size));
    std::copy_n(type.begin(), 4, &start[4]);
    std::array<std::uint8_t, 4> crc{};
    put32be(crc.data(), crc32(data, size, crc32(&start[4], 4)));
    return writeBytes(file, start.data(), start.size()) && writeBytes(file, data, size) &&
           writeBytes(file, crc.data(), crc.size());
}

bool save_png_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height) {
    if (pixels == nullptr || width < 1 || height < 1) return false;
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return false;
    const bool written = writeHeader(file, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)) &&
                         writePixels(file, pixels, static_cast<std::size_t>(width), static_cast<std::size_t>(height)) &&
                         write_chunk(file, chunk::end, nullptr, 0);
    const bool closed = std::fclose(file) == 0;
    return written && closed;
}

bool save_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height) {
    return save_png_rgba8_file(path, pixels, width, height);
}

} // namespace wm::png
