// Whole files, and loading by the format the first bytes name.
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "image/codecs.h"

namespace tovi::ref::image {

namespace {

enum class FileFormat { Unknown, Png, Jpeg, Bmp, Tiff, Exr };

FileFormat sniffFormat(const std::string& fileName) {
    uint8_t start[8] = {};
    OpenFile file(fileName);
    size_t count = std::fread(start, 1, sizeof start, file.get());
    static const uint8_t png[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    if (count >= 8 && std::memcmp(start, png, 8) == 0) return FileFormat::Png;
    if (count >= 3 && start[0] == 0xFF && start[1] == 0xD8 && start[2] == 0xFF) return FileFormat::Jpeg;
    if (count >= 2 && start[0] == 'B' && start[1] == 'M') return FileFormat::Bmp;
    if (count >= 4 && ((start[0] == 'I' && start[1] == 'I' && (start[2] == 42 || start[2] == 43) && start[3] == 0) ||
                       (start[0] == 'M' && start[1] == 'M' && start[2] == 0 && (start[3] == 42 || start[3] == 43)))) {
        return FileFormat::Tiff;
    }
    if (count >= 4 && start[0] == 0x76 && start[1] == 0x2F && start[2] == 0x31 && start[3] == 0x01) return FileFormat::Exr;
    return FileFormat::Unknown;
}

}  // namespace

OpenFile::OpenFile(const std::string& fileName) : file_(std::fopen(fileName.c_str(), "rb")) {
    if (!file_) throw ImageError("cannot open " + fileName);
}

OpenFile::~OpenFile() { std::fclose(file_); }

void writeFile(const std::string& fileName, const Bytes& bytes) {
    std::FILE* file = std::fopen(fileName.c_str(), "wb");
    if (!file) throw ImageError("cannot create " + fileName);
    bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    if (std::fclose(file) != 0) written = false;
    if (!written) throw ImageError("cannot write " + fileName);
}

Bytes readFile(const std::string& fileName) {
    OpenFile file(fileName);
    Bytes bytes;
    uint8_t chunk[65536];
    size_t count;
    while ((count = std::fread(chunk, 1, sizeof chunk, file.get())) > 0) bytes.insert(bytes.end(), chunk, chunk + count);
    if (std::ferror(file.get())) throw ImageError("cannot read " + fileName);
    return bytes;
}

ImagePtr loadImage(const std::string& fileName) {
    switch (sniffFormat(fileName)) {
        case FileFormat::Png: {
            Bytes bytes = readFile(fileName);
            return decodePng(bytes.data(), bytes.size());
        }
        case FileFormat::Jpeg: {
            Bytes bytes = readFile(fileName);
            return decodeJpeg(bytes.data(), bytes.size());
        }
        case FileFormat::Bmp: {
            Bytes bytes = readFile(fileName);
            return decodeBmp(bytes.data(), bytes.size());
        }
        case FileFormat::Tiff: return readTiff(fileName);
        case FileFormat::Exr: return readExr(fileName);
        case FileFormat::Unknown: break;
    }
    throw ImageError("unknown image file format");
}

Size loadImageSize(const std::string& fileName) {
    switch (sniffFormat(fileName)) {
        case FileFormat::Png: return pngFileSize(fileName);
        case FileFormat::Jpeg: return jpegFileSize(fileName);
        case FileFormat::Bmp: return bmpFileSize(fileName);
        case FileFormat::Tiff: return tiffFileSize(fileName);
        case FileFormat::Exr: return exrFileSize(fileName);
        case FileFormat::Unknown: break;
    }
    throw ImageError("unknown image file format");
}

}  // namespace tovi::ref::image
