// Reading and writing files in one piece. The size is asked for first, so that a file beyond the limit is never read,
// and a device without an end is no file.

#include "plush/runtime_file.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <ios>

namespace {

std::string normalised(std::string path) {
    std::ranges::replace(path, '\\', '/');
    return path;
}

} // namespace

bool readRuntimeFile(const std::string& path, std::vector<std::uint8_t>& bytes, std::uint64_t limit) {
    std::filebuf file;
    if (file.open(normalised(path), std::ios::in | std::ios::binary) == nullptr) return false;
    const std::streamoff end = file.pubseekoff(0, std::ios::end, std::ios::in);
    if (end < 0 || static_cast<std::uint64_t>(end) > limit || file.pubseekpos(0, std::ios::in) != 0) return false;
    bytes.resize(static_cast<std::size_t>(end));
    return file.sgetn(reinterpret_cast<char*>(bytes.data()), end) == end;
}

bool writeRuntimeFile(const std::string& path, std::span<const std::uint8_t> bytes) {
    std::FILE* file = std::fopen(normalised(path).c_str(), "wb");
    if (file == nullptr) return false;
    const bool written = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const bool closed = std::fclose(file) == 0;
    return written && closed;
}
