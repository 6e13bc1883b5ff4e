#include "script/binary_file.h"

#include <fstream>
#include <stdexcept>

std::vector<unsigned char> readBinaryFile(const std::string& path, const std::string& kind) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("Failed to open " + kind + " file for reading: " + path);
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    if (size < 0) throw std::runtime_error("Failed to size " + kind + " file: " + path);
    in.seekg(0);

    // What opens as a file need not be one: a directory has a size, too, but not a first byte.
    const std::string shortRead = "Invalid " + kind + " file (truncated data): " + path;
    const bool hasBytes = size > 0 && in.peek() != std::ifstream::traits_type::eof();
    if (size > 0 && !hasBytes) throw std::runtime_error(shortRead);
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    if (hasBytes && !in.read(reinterpret_cast<char*>(bytes.data()), size)) throw std::runtime_error(shortRead);
    return bytes;
}

void writeBinaryFile(const std::string& path, const std::string& kind, const std::vector<unsigned char>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) throw std::runtime_error("Failed to open " + kind + " file for writing: " + path);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) throw std::runtime_error("Failed to write " + kind + " file: " + path);
}
