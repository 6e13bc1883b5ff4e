// Against other people's libraries: what libpng writes we read as libpng and libspng do, and what we write they read.

#include "plush/png.h"
#include "png_maker.h"
#include "temporary_directory.h"

#include <gtest/gtest.h>

#include <png.h>
#include <spng.h>

#include <cstring>

namespace {

using namespace png_test;

struct Reader {
    const Bytes* file;
    std::size_t at;
};

void readFrom(png_structp png, png_bytep data, std::size_t size) {
    auto& reader = *static_cast<Reader*>(png_get_io_ptr(png));
    if (size > reader.file->size() - reader.at) png_error(png, "end of file");
    std::memcpy(data, reader.file->data() + reader.at, size);
    reader.at += size;
}

void appendTo(png_structp png, png_bytep data, std::size_t size) {
    auto& file = *static_cast<Bytes*>(png_get_io_ptr(png));
    file.insert(file.end(), data, data + size);
}

/// RGBA pixels by libpng, which reduces 16 bits by exact rounding.
Bytes libpngPixels(const Bytes& file) {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    Reader reader{&file, 0};
    png_set_read_fn(png, &reader, readFrom);
    png_read_info(png, info);
    png_set_expand(png);
    png_set_scale_16(png);
    png_set_gray_to_rgb(png);
    png_set_add_alpha(png, 255, PNG_FILLER_AFTER);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    const std::size_t rowSize = std::size_t{png_get_image_width(png, info)} * 4;
    Bytes pixels(rowSize * png_get_image_height(png, info));
    std::vector<png_bytep> rows;
    for (std::size_t at = 0; at < pixels.size(); at += rowSize) rows.push_back(pixels.data() + at);
    png_read_image(png, rows.data());
    png_destroy_read_struct(&png, &info, nullptr);
    return pixels;
}

/// RGBA pixels by libspng, which drops the lower byte of 16 bits.
Bytes libspngPixels(const Bytes& file) {
    spng_ctx* context = spng_ctx_new(0);
    spng_set_png_buffer(context, file.data(), file.size());
    std::size_t size = 0;
    spng_decoded_image_size(context, SPNG_FMT_RGBA8, &size);
    Bytes pixels(size);
    if (spng_decode_image(context, pixels.data(), size, SPNG_FMT_RGBA8, SPNG_DECODE_TRNS) != 0) pixels.clear();
    spng_ctx_free(context);
    return pixels;
}

/// A file that libpng writes from random rows of the given kind, with random settings.
Bytes libpngFile(Random& random, Kind kind, bool interlaced) {
    const std::uint32_t width = 1 + random() % 120;
    const std::uint32_t height = 1 + random() % 120;
    const Samples samples = randomSamples(random, width, height, kind.colourType, kind.depth);

    Bytes file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, appendTo, nullptr);
    png_set_IHDR(png, info, width, height, static_cast<int>(kind.depth), kind.colourType,
                 interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, static_cast<int>(random() % 10));
    png_set_compression_strategy(png, static_cast<int>(random() % 5));
    png_set_filter(png, PNG_FILTER_TYPE_BASE, static_cast<int>(random() % 32 * 8));
    if (random() % 2 == 0) png_set_compression_buffer_size(png, 64 + random() % 500);
    std::vector<png_color> palette;
    for (const auto& colour : samples.palette) palette.push_back({colour[0], colour[1], colour[2]});
    if (!palette.empty()) png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    Bytes alphas(1 + random() % std::max<std::size_t>(palette.size(), 1), static_cast<std::uint8_t>(random()));
    png_color_16 key{};
    key.gray = samples.values[0];
    key.red = samples.values[0];
    if (samples.channels() == 3) {
        key.green = samples.values[1];
        key.blue = samples.values[2];
    }
    if (kind.colourType < 4 && random() % 2 == 0)
        png_set_tRNS(png, info, alphas.data(), static_cast<int>(alphas.size()), &key);
    png_write_info(png, info);

    // The rows as the file stores them, without filters, from the plain writer.
    Random unused(1);
    Bytes rows = filteredRows(samples, false, RowFilter::none, unused);
    const std::size_t rowSize = rows.size() / height;
    std::vector<png_bytep> pointers;
    for (std::size_t y = 0; y < height; ++y) pointers.push_back(rows.data() + y * rowSize + 1);
    png_write_image(png, pointers.data());
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

TEST(PngPeers, FilesOfLibpngGiveThePixelsThatTheLibrariesGive) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (int round = 0; round < 20; ++round)
        for (const Kind kind : allKinds)
            for (const bool interlaced : {false, true}) {
                const Bytes file = libpngFile(random, kind, interlaced);
                const auto pixels = loadedPixels(file);
                ASSERT_TRUE(pixels);
                ASSERT_TRUE(*pixels == libpngPixels(file)) << int{kind.colourType} << ' ' << kind.depth;
                if (kind.depth == 16) continue;
                ASSERT_TRUE(*pixels == libspngPixels(file)) << int{kind.colourType} << ' ' << kind.depth;
            }
}

TEST(PngPeers, WhatWeWriteTheyRead) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    const TemporaryDirectory directory;
    const std::string path = directory.path("picture.png");
    for (int round = 0; round < 50; ++round) {
        const std::uint32_t width = 1 + random() % 300;
        const std::uint32_t height = 1 + random() % 300;
        Bytes pixels(std::size_t{width} * height * 4);
        const unsigned range = 1 + random() % 256;
        for (auto& byte : pixels) byte = static_cast<std::uint8_t>(random() % range);
        ASSERT_TRUE(wm::png::save_rgba8_file(path, pixels.data(), static_cast<int>(width), static_cast<int>(height)));
        const Bytes file = readFile(path);
        ASSERT_TRUE(libpngPixels(file) == pixels);
        ASSERT_TRUE(libspngPixels(file) == pixels);
    }
}

} // namespace
