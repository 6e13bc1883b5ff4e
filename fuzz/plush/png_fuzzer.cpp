// Any bytes given to the PNG loader.
//
// Checksums would keep a fuzzer at the door, so it gets two ways around them. Input that begins like a PNG file is
// loaded as it is, then with all chunks' checksums put right, then once more with its compressed data cut into chunks
// of one byte: that takes the decompressor's slow way all along, and must give the same. Any other input is a recipe
// for a file whose data are stored and whose checksums are all right, so that what comes behind them is reached too:
// filters, expansion, and the laying of frames.

#include "plush/byte_reader.h"
#include "plush/png.h"
#include "plush/png_checksums.h"
#include "plush/png_chunks.h"
#include "plush/png_decode.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;
using View = std::span<const std::uint8_t>;

void append32(Bytes& to, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) to.push_back(static_cast<std::uint8_t>(value >> shift));
}

void append(Bytes& to, View data) { to.insert(to.end(), data.begin(), data.end()); }

void appendChunk(Bytes& file, std::string_view type, View data) {
    append32(file, static_cast<std::uint32_t>(data.size()));
    const std::size_t start = file.size();
    file.insert(file.end(), type.begin(), type.end());
    append(file, data);
    append32(file, wm::png::crc32(file.data() + start, file.size() - start));
}

/// The picture, or nothing; stops the run if a picture is not what its size says.
std::optional<wm::png::Image> load(const Bytes& file) {
    wm::png::Image image;
    if (!wm::png::load_memory(file.data(), file.size(), image)) return std::nullopt;
    const std::size_t pixels = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    if (image.width < 1 || image.height < 1 || image.pixels.size() != pixels * wm::png::rgbaSize) std::abort();
    return image;
}

// ---- files ----

enum class Cut { none, bytes };

/// The file with its checksums put right, as far as it has chunks; what is left over stays as it is.
Bytes repaired(View data, Cut cut) {
    Bytes file;
    ByteReader reader(data);
    append(file, reader.bytes(wm::png::pngSignature.size()));
    while (reader.remaining() >= 12) {
        View rest = data.last(reader.remaining());
        const std::uint32_t length = reader.u32be();
        if (length > reader.remaining() - 8) {
            append(file, rest);
            break;
        }
        const View typeBytes = reader.bytes(4);
        const std::string_view type(reinterpret_cast<const char*>(typeBytes.data()), typeBytes.size());
        const View content = reader.bytes(length);
        reader.skip(4);
        if (cut == Cut::bytes && type == wm::png::chunk::imageData) {
            for (std::size_t at = 0; at < content.size(); ++at) appendChunk(file, type, content.subspan(at, 1));
        } else {
            appendChunk(file, type, content);
        }
    }
    return file;
}

void tryFile(View data) {
    load(Bytes(data.begin(), data.end()));
    const auto whole = load(repaired(data, Cut::none));
    const auto cut = load(repaired(data, Cut::bytes));
    // Data that are cut up leave no empty chunk, which could have begun a frame; no other difference is allowed.
    if (whole.has_value() != cut.has_value()) std::abort();
    if (whole && (whole->width != cut->width || whole->height != cut->height || whole->pixels != cut->pixels))
        std::abort();
}

// ---- recipes ----

/// The next `size` bytes of a recipe, with zeros where it is over.
Bytes takePadded(ByteReader& recipe, std::size_t size) {
    const View taken = recipe.bytes(std::min(size, recipe.remaining()));
    Bytes bytes(taken.begin(), taken.end());
    bytes.resize(size);
    return bytes;
}

std::uint8_t takeByte(ByteReader& recipe) { return takePadded(recipe, 1).front(); }

/// A zlib stream of stored blocks that gives rows for a picture of this size. Filter bytes are made valid, since most
/// of the bytes between them would otherwise never be looked at.
Bytes storedRows(ByteReader& recipe, const wm::png::Header& header, std::uint32_t width, std::uint32_t height) {
    constexpr std::size_t blockSize = 5000;
    Bytes rows = takePadded(recipe, wm::png::raw_size(header, width, height));
    const std::size_t stride = rows.size() / height;
    if (header.interlaceMethod == wm::png::notInterlaced)
        for (std::size_t at = 0; at < rows.size(); at += stride) rows[at] = static_cast<std::uint8_t>(rows[at] % 5);
    Bytes stream = {0x78, 0x01};
    for (std::size_t at = 0; at < rows.size(); at += blockSize) {
        const std::size_t size = std::min(blockSize, rows.size() - at);
        const auto low = static_cast<std::uint8_t>(size);
        const auto high = static_cast<std::uint8_t>(size >> 8);
        const std::uint8_t last = at + size == rows.size() ? 1 : 0;
        append(stream, Bytes{last, low, high, static_cast<std::uint8_t>(~low), static_cast<std::uint8_t>(~high)});
        append(stream, View(rows).subspan(at, size));
    }
    append32(stream, wm::png::adler32(rows.data(), rows.size()));
    return stream;
}

void tryRecipe(View data) {
    ByteReader recipe(data);
    wm::png::Header header;
    header.width = 1U + takeByte(recipe) % 40;
    header.height = 1U + takeByte(recipe) % 40;
    header.bitDepth = static_cast<std::uint8_t>(1 << takeByte(recipe) % 5);
    header.colourType = takeByte(recipe) % 7;
    header.interlaceMethod = takeByte(recipe) % 2;
    const std::uint8_t paletteSize = takeByte(recipe);
    const std::uint8_t transparencySize = takeByte(recipe);
    const unsigned frames = takeByte(recipe) % 4;
    const bool defaultIsFrame = takeByte(recipe) % 2 == 1;

    Bytes file(wm::png::pngSignature.begin(), wm::png::pngSignature.end());
    Bytes fields;
    append32(fields, header.width);
    append32(fields, header.height);
    append(fields, Bytes{header.bitDepth, header.colourType, 0, 0, header.interlaceMethod});
    appendChunk(file, wm::png::chunk::header, fields);
    if (paletteSize > 0) appendChunk(file, wm::png::chunk::palette, takePadded(recipe, 3 * std::size_t{paletteSize}));
    if (transparencySize > 0) appendChunk(file, wm::png::chunk::transparency, takePadded(recipe, transparencySize));
    if (frames > 0) appendChunk(file, wm::png::chunk::animation, Bytes(8));
    if (!defaultIsFrame || frames == 0)
        appendChunk(file, wm::png::chunk::imageData, storedRows(recipe, header, header.width, header.height));
    for (unsigned frame = 0; frame < frames; ++frame) {
        const std::uint32_t width = 1U + takeByte(recipe) % header.width;
        const std::uint32_t height = 1U + takeByte(recipe) % header.height;
        Bytes control(4);
        append32(control, width);
        append32(control, height);
        append32(control, takeByte(recipe) % (header.width - width + 1));
        append32(control, takeByte(recipe) % (header.height - height + 1));
        append(control, takePadded(recipe, 5));
        control.push_back(takeByte(recipe) % 2);
        appendChunk(file, wm::png::chunk::frameControl, control);
        const Bytes stream = storedRows(recipe, header, width, height);
        if (frame == 0 && defaultIsFrame) {
            appendChunk(file, wm::png::chunk::imageData, stream);
        } else {
            Bytes numbered(4);
            append(numbered, stream);
            appendChunk(file, wm::png::chunk::frameData, numbered);
        }
    }
    appendChunk(file, wm::png::chunk::end, {});
    load(file);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const View input(data, size);
    const auto& signature = wm::png::pngSignature;
    if (size >= signature.size() && std::ranges::equal(input.first(signature.size()), signature)) {
        tryFile(input);
    } else {
        load(Bytes(data, data + size));
        tryRecipe(input);
    }
    return 0;
}
