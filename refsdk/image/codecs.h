// Image files and encoded buffers, each format through its own library. Encoders write the
// image's values; the 8-bit ones apply its output gamma to the colour channels (never to
// alpha). Failures throw ImageError.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "image/image.h"

namespace tovi::ref::image {

using Bytes = std::vector<uint8_t>;

// PNG, 8 or 16 bits per channel, RGB or RGBA. An 8-bit file with an output gamma other than 1
// records it in its gAMA chunk. Decoding keeps 16 bits, and a gAMA chunk sets the image's
// output gamma and turns the stored values back into the image's.
Bytes encodePng(const ToviImage& image, bool alpha, bool sixteenBits);
ImagePtr decodePng(const uint8_t* data, size_t size);

// JPEG, RGB; quality 1..100 (0 chooses 90). Alpha is dropped, decoding gives alpha 1.
Bytes encodeJpeg(const ToviImage& image, int quality);
ImagePtr decodeJpeg(const uint8_t* data, size_t size);

// BMP, 24 bits, or 32 with alpha; swapChannels exchanges red and blue in the file.
Bytes encodeBmp(const ToviImage& image, bool alpha, bool swapChannels);
ImagePtr decodeBmp(const uint8_t* data, size_t size);

// TIFF, RGBA, 8 or 16 bits (unsigned) or 32 (float) per channel, deflate-compressed.
void writeTiff(const ToviImage& image, const std::string& fileName, int bitsPerChannel);
ImagePtr readTiff(const std::string& fileName);

// OpenEXR, RGBA, half or float channels.
enum class ExrChannels { Half, Float };
void writeExr(const ToviImage& image, const std::string& fileName, ExrChannels channels);
ImagePtr readExr(const std::string& fileName);

void writeFile(const std::string& fileName, const Bytes& bytes);
Bytes readFile(const std::string& fileName);

// A file open for reading, closed on destruction; ImageError when it cannot be opened.
class OpenFile {
public:
    explicit OpenFile(const std::string& fileName);
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    std::FILE* get() const { return file_; }

private:
    std::FILE* file_;
};

// The sizes in the headers of files of each format.
Size pngFileSize(const std::string& fileName);
Size jpegFileSize(const std::string& fileName);
Size bmpFileSize(const std::string& fileName);
Size tiffFileSize(const std::string& fileName);
Size exrFileSize(const std::string& fileName);

// Any of the five formats, recognised by their first bytes, not by the file name.
ImagePtr loadImage(const std::string& fileName);
// The size from the file's header, without decoding the pixels.
Size loadImageSize(const std::string& fileName);

}  // namespace tovi::ref::image
