// libpng and libspng behind two lines each.

#include "png_peers.h"

#include <png.h>
#include <spng.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>

namespace velmaris::bench {

namespace {

void appendTo(png_structp png, png_bytep data, std::size_t size) {
    auto& file = *static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    file.insert(file.end(), data, data + size);
}

struct Reader {
    const std::uint8_t* at;
    std::size_t left;
};

void readFrom(png_structp png, png_bytep data, std::size_t size) {
    auto& reader = *static_cast<Reader*>(png_get_io_ptr(png));
    if (size > reader.left) png_error(png, "end of file");
    std::memcpy(data, reader.at, size);
    reader.at += size;
    reader.left -= size;
}

/// One row of the picture as the file stores it. The palette is a cube of 6 by 6 by 6 colours.
std::vector<std::uint8_t> storedRow(const Picture& picture, Storage storage, std::uint32_t y) {
    std::vector<std::uint8_t> row;
    for (std::uint32_t x = 0; x < picture.width; ++x) {
        const std::uint8_t* p = picture.pixels.data() + (std::size_t{y} * picture.width + x) * 4;
        switch (storage) {
        case Storage::rgba:
        case Storage::rgbaInterlaced: row.insert(row.end(), p, p + 4); break;
        case Storage::rgb: row.insert(row.end(), p, p + 3); break;
        case Storage::grey: row.push_back(p[1]); break;
        case Storage::indexed:
            row.push_back(static_cast<std::uint8_t>(p[0] * 6 / 256 * 36 + p[1] * 6 / 256 * 6 + p[2] * 6 / 256));
            break;
        case Storage::rgb16:
            for (int channel = 0; channel < 3; ++channel) row.insert(row.end(), {p[channel], p[(channel + 1) % 3]});
            break;
        }
    }
    return row;
}

int colourTypeOf(Storage storage) {
    switch (storage) {
    case Storage::rgba:
    case Storage::rgbaInterlaced: return PNG_COLOR_TYPE_RGBA;
    case Storage::indexed: return PNG_COLOR_TYPE_PALETTE;
    case Storage::grey: return PNG_COLOR_TYPE_GRAY;
    default: return PNG_COLOR_TYPE_RGB;
    }
}

} // namespace

std::vector<std::uint8_t> makeFile(const Picture& picture, Storage storage) {
    std::vector<std::uint8_t> file;
    std::vector<std::vector<std::uint8_t>> rows;
    std::vector<png_bytep> rowPointers;
    for (std::uint32_t y = 0; y < picture.height; ++y) rows.push_back(storedRow(picture, storage, y));
    for (auto& row : rows) rowPointers.push_back(row.data());

    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, appendTo, nullptr);
    png_set_IHDR(png, info, picture.width, picture.height, storage == Storage::rgb16 ? 16 : 8, colourTypeOf(storage),
                 storage == Storage::rgbaInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    std::vector<png_color> palette;
    for (int i = 0; i < 216; ++i)
        palette.push_back({static_cast<png_byte>(i / 36 * 51), static_cast<png_byte>(i / 6 % 6 * 51),
                           static_cast<png_byte>(i % 6 * 51)});
    if (storage == Storage::indexed) png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    png_write_info(png, info);
    png_write_image(png, rowPointers.data());
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

std::unique_ptr<std::uint8_t[]> decodeWithLibspng(const std::vector<std::uint8_t>& file) {
    spng_ctx* context = spng_ctx_new(0);
    spng_set_png_buffer(context, file.data(), file.size());
    std::size_t size = 0;
    std::unique_ptr<std::uint8_t[]> pixels;
    if (spng_decoded_image_size(context, SPNG_FMT_RGBA8, &size) == 0) {
        pixels = std::make_unique_for_overwrite<std::uint8_t[]>(size);
        if (spng_decode_image(context, pixels.get(), size, SPNG_FMT_RGBA8, SPNG_DECODE_TRNS) != 0) pixels.reset();
    }
    spng_ctx_free(context);
    return pixels;
}

std::unique_ptr<std::uint8_t[]> decodeWithLibpng(const std::vector<std::uint8_t>& file) {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    Reader reader{file.data(), file.size()};
    png_set_read_fn(png, &reader, readFrom);
    png_read_info(png, info);
    const std::uint32_t width = png_get_image_width(png, info);
    const std::uint32_t height = png_get_image_height(png, info);
    png_set_expand(png);
    png_set_scale_16(png);
    png_set_gray_to_rgb(png);
    png_set_add_alpha(png, 255, PNG_FILLER_AFTER);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    auto pixels = std::make_unique_for_overwrite<std::uint8_t[]>(std::size_t{width} * height * 4);
    std::vector<png_bytep> rows;
    for (std::uint32_t y = 0; y < height; ++y) rows.push_back(pixels.get() + std::size_t{y} * width * 4);
    png_read_image(png, rows.data());
    png_destroy_read_struct(&png, &info, nullptr);
    return pixels;
}

bool saveWithLibpng(const std::string& path, const Picture& picture, Filters filters) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return false;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_compression_level(png, 0);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, filters == Filters::none ? PNG_FILTER_NONE : PNG_ALL_FILTERS);
    png_set_IHDR(png, info, picture.width, picture.height, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (std::uint32_t y = 0; y < picture.height; ++y)
        png_write_row(png, picture.pixels.data() + std::size_t{y} * picture.width * 4);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return std::fclose(file) == 0;
}

} // namespace velmaris::bench
